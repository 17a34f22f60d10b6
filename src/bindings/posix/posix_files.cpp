#include "bindings/posix/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "base/text.h"
#include "bindings/posix/descriptor.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/file_lock.h"

namespace korvane::posix {
namespace {

bool IsWritable(const std::filesystem::path& folder) {
    // To root every folder is writable, except on a file system that is not.
    struct statvfs system {};
    if (::statvfs(folder.c_str(), &system) != 0 || (system.f_flag & ST_RDONLY) != 0) return false;
    return ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::filesystem::path Normal(const std::filesystem::path& folder) {
    // Without the "/" at its end, which would count as a part of its own.
    return folder.empty() ? folder : (folder / "").lexically_normal().parent_path();
}

std::string OneLine(const std::u16string& line) {
    std::string bytes = ToUtf8(line);
    std::replace_if(
        bytes.begin(), bytes.end(), [](char ch) { return ch == '\n' || ch == '\r'; }, ' ');
    return bytes + '\n';
}

// In one call, so that writers of any kind never mix their lines.
void WriteAtEnd(int file, const std::string& bytes, const std::filesystem::path& path) {
    ssize_t count = 0;
    do {
        count = ::write(file, bytes.data(), bytes.size());
    } while (count < 0 && errno == EINTR);
    if (count == static_cast<ssize_t>(bytes.size())) return;
    const int code = count < 0 ? errno : ENOSPC;
    // A part of a line is worse than none. The lock keeps our other writers from
    // having written behind it.
    struct stat status {};
    if (count > 0 && ::fstat(file, &status) == 0) {
        [[maybe_unused]] const int cut = ::ftruncate(file, status.st_size - count);
    }
    throw SystemError(code, path.native());
}

}  // namespace

PosixFiles::PosixFiles(const Folders& folders, const std::filesystem::path& addInFolder)
    : state_(folders.state.empty() ? folders.state : Normal(folders.state / "korvane")),
      addIn_(Normal(addInFolder)),
      paths_({state_, addIn_}),
      addInIsReadOnly_(!addIn_.empty() && !IsWritable(addIn_)) {}

std::filesystem::path PosixFiles::PlaceToWrite(const std::u16string& path) const {
    const auto native = paths_.Native(path);
    if (!addInIsReadOnly_ || !IsBelow(native, addIn_)) return native;
    return state_.empty() ? state_ : state_ / native.lexically_relative(addIn_);
}

void PosixFiles::AppendLine(const std::u16string& path, const std::u16string& line) {
    constexpr std::chrono::seconds kPatience(5);
    const auto native = PlaceToWrite(path);
    if (native.empty()) throw SystemError(ENOENT, ToUtf8(path));
    if (IsBelow(native, state_)) MakeFolders(native.parent_path());
    constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    const Descriptor file(::open(native.c_str(), kFlags, 0600));
    if (!file) throw SystemError(errno, native.native());
    const LockTime end = std::chrono::steady_clock::now() + kPatience;
    if (!LockBefore(end, file.get(), 0, native)) throw SystemError(EBUSY, native.native());
    WriteAtEnd(file.get(), OneLine(line), native);
}

bool PosixFiles::Exists(const std::u16string& path) {
    const auto native = paths_.Native(path);
    struct stat status {};
    return !native.empty() && ::stat(native.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

std::u16string PosixFiles::StateFolder() { return HostFolder(state_); }

}  // namespace korvane::posix
