// Locks between processes.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>

#include "bindings/posix/descriptor.h"

namespace korvane::posix {

using LockTime = std::chrono::steady_clock::time_point;

// Locks one byte of a file that is open for writing, whether the byte exists or
// not, against everyone else who opened the file. Gives up at `end`, after one
// attempt at least, and returns false; raises, naming `path`, where files cannot
// be locked. The lock goes when the file is closed, however the process ends.
bool LockBefore(LockTime end, int file, off_t byte, const std::filesystem::path& path);

// A lock that is held as long as this object lives, on a file that exists for
// nothing else. The file stays: whoever removed it would take the lock from
// under those who wait for it. Who has held the lock for a few milliseconds, as
// a change of a file takes, gets it again only after one of those who waited.
class FileLock {
public:
    // Makes the file where it is missing. Raises when it cannot be opened or the
    // lock is not to be had within `patience`.
    FileLock(const std::filesystem::path& path, std::chrono::milliseconds patience);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    Descriptor file_;
};

}  // namespace korvane::posix
