// Small files that are read and replaced as a whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace korvane::posix {

// No file that is larger (in bytes) is read or written, so that one cannot be
// written that is never read again.
inline constexpr std::size_t kLargestFile = 16U << 20U;

// Where the path leads when it is a symbolic link, also one to a file that does
// not exist yet; else the path itself.
std::filesystem::path LinkTarget(std::filesystem::path path);

// The file's bytes; nothing when there is no such file. Raises when it cannot be
// read, is larger than kLargestFile, or is no regular file; never waits.
std::optional<std::string> ReadWhole(const std::filesystem::path& path);

// Replaces the file's bytes, or makes the file, for the user alone: whatever
// happens, it holds either the old bytes or the new. An existing file keeps its
// mode, and its owner where that is allowed. They are first written to a file
// beside it (path + ".new"), so only one process may do this at a time. Raises
// when that fails, and when an existing file may not be written; the file is
// then as before.
void ReplaceWhole(const std::filesystem::path& path, const std::string& bytes);

// Makes sure that names within the folder outlast a power cut. A failure is not
// reported: what the names lead to is in place.
void SyncFolder(const std::filesystem::path& folder);

}  // namespace korvane::posix
