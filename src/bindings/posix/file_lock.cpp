#include "bindings/posix/file_lock.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <thread>

#include "bindings/posix/errors.h"

namespace korvane::posix {
namespace {

// Who wants the lock takes the turn first and gives it up when he has the lock.
// So one at most waits for the lock itself, and he is the next.
constexpr off_t kLockByte = 0;
constexpr off_t kTurnByte = 1;

// The locks belong to the open file, not to the process, whose other code could
// otherwise drop them by closing the same file. 0 or a value of errno.
int SetLock(int file, off_t byte, short type) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    return ::fcntl(file, F_OFD_SETLK, &range) == 0 ? 0 : errno;
}

}  // namespace

bool LockBefore(LockTime end, int file, off_t byte, const std::filesystem::path& path) {
    // There is no waiting for a lock that ends by itself, so it is asked for
    // again and again.
    constexpr std::chrono::milliseconds kPause(1);
    for (;;) {
        const int code = SetLock(file, byte, F_WRLCK);
        if (code == 0) return true;
        if (code != EAGAIN && code != EACCES && code != EINTR) {
            throw SystemError(code, path.native());
        }
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(kPause);
    }
}

FileLock::FileLock(const std::filesystem::path& path, std::chrono::milliseconds patience)
    : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, 0600)) {
    if (!file_) throw SystemError(errno, path.native());
    const LockTime end = std::chrono::steady_clock::now() + patience;
    const bool locked = LockBefore(end, file_.get(), kTurnByte, path) &&
                        LockBefore(end, file_.get(), kLockByte, path);
    SetLock(file_.get(), kTurnByte, F_UNLCK);
    if (!locked) throw SystemError(EBUSY, path.native());
}

FileLock::~FileLock() {
    // Closing alone would leave the lock with a child that another thread has
    // forked meanwhile.
    SetLock(file_.get(), kLockByte, F_UNLCK);
}

}  // namespace korvane::posix
