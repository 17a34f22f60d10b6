#include "bindings/posix/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <utility>

#include "bindings/posix/descriptor.h"
#include "bindings/posix/errors.h"

namespace korvane::posix {
namespace {

[[noreturn]] void Fail(const std::filesystem::path& path) {
    throw SystemError(errno, path.native());
}

void CheckReadable(int file, const std::filesystem::path& path) {
    struct stat status {};
    if (::fstat(file, &status) != 0) Fail(path);
    if (S_ISDIR(status.st_mode)) throw SystemError(EISDIR, path.native());
    if (!S_ISREG(status.st_mode)) throw SystemError(EINVAL, path.native());
}

std::string ReadToEnd(int file, const std::filesystem::path& path) {
    std::string bytes;
    std::string block(std::size_t{16} * 1024, '\0');
    for (;;) {
        const ssize_t count = ::read(file, block.data(), block.size());
        if (count == 0) return bytes;
        if (count > 0) {
            bytes.append(block, 0, static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            Fail(path);
        }
        if (bytes.size() > kLargestFile) throw SystemError(EFBIG, path.native());
    }
}

// A file on its way to its name; goes with this object unless it got there.
class NewFile {
public:
    explicit NewFile(std::filesystem::path path) : path_(std::move(path)) {
        // One may be left by a process that was killed; its mode could even keep
        // us from opening it.
        ::unlink(path_.c_str());
        file_ = Descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!file_) Fail(path_);
    }
    ~NewFile() {
        if (file_) ::unlink(path_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
            if (count > 0) {
                bytes.remove_prefix(static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                Fail(path_);
            }
        }
    }

    // The owner first: a change of owner takes bits from the mode.
    void SetOwnerAndMode(const struct stat& like) const {
        const bool owned = ::fchown(file_.get(), like.st_uid, like.st_gid) == 0;
        // Never open a file to a group or an owner that it was not meant for.
        const mode_t mode = owned ? like.st_mode & 07777U : like.st_mode & 0700U;
        if (::fchmod(file_.get(), mode) != 0) Fail(path_);
    }

    void MoveTo(const std::filesystem::path& path) {
        if (::fsync(file_.get()) != 0) Fail(path_);
        if (::rename(path_.c_str(), path.c_str()) != 0) Fail(path);
        file_.Close();
    }

private:
    std::filesystem::path path_;
    Descriptor file_;
};

}  // namespace

std::filesystem::path LinkTarget(std::filesystem::path path) {
    constexpr int kMostLinks = 40;  // the system's own limit
    for (int k = 0; k < kMostLinks; ++k) {
        std::error_code failed;
        const auto target = std::filesystem::read_symlink(path, failed);
        if (failed) break;
        path = path.parent_path() / target;
    }
    return path;
}

std::optional<std::string> ReadWhole(const std::filesystem::path& path) {
    // Without O_NONBLOCK a pipe of that name would be waited for.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        if (errno == ENOENT) return std::nullopt;
        Fail(path);
    }
    CheckReadable(file.get(), path);
    return ReadToEnd(file.get(), path);
}

void ReplaceWhole(const std::filesystem::path& path, const std::string& bytes) {
    if (bytes.size() > kLargestFile) throw SystemError(EFBIG, path.native());
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    // The folder's permission would suffice to replace it, but a file that is
    // protected is meant to stay as it is.
    if (exists && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) Fail(path);
    NewFile file(path.native() + ".new");
    file.Write(bytes);
    if (exists) file.SetOwnerAndMode(old);
    file.MoveTo(path);
}

void SyncFolder(const std::filesystem::path& folder) {
    const Descriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file) ::fsync(file.get());
}

}  // namespace korvane::posix
