#include "bindings/posix/folders.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

#include "bindings/posix/errors.h"

namespace korvane::posix {
namespace {

std::filesystem::path AbsoluteValue(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && value[0] == '/' ? value : "";
}

std::filesystem::path FolderOf(const char* variable, const char* withinHome) {
    if (auto folder = AbsoluteValue(variable); !folder.empty()) return folder;
    const auto home = AbsoluteValue("HOME");
    return home.empty() ? home : home / withinHome;
}

bool IsFolder(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

Folders UserFolders() {
    return {FolderOf("XDG_CONFIG_HOME", ".config"), FolderOf("XDG_STATE_HOME", ".local/state")};
}

void MakeFolders(const std::filesystem::path& folder) {
    if (IsFolder(folder)) return;
    if (folder.has_relative_path()) MakeFolders(folder.parent_path());
    if (::mkdir(folder.c_str(), 0700) == 0) return;
    const int code = errno;
    // Another process may have made it meanwhile; a path that ends in "/" has
    // been made with its parent.
    if (!IsFolder(folder)) throw SystemError(code, folder.native());
}

}  // namespace korvane::posix
