// Where a user's files belong.
#pragma once

#include <filesystem>

namespace korvane::posix {

// Absolute folders that all programs share; each has its own folder within
// them. Empty where the user has none (no home).
struct Folders {
    std::filesystem::path config;  // for settings
    std::filesystem::path state;   // for logs and the like
};

// As the environment says: XDG_CONFIG_HOME and XDG_STATE_HOME, or .config and
// .local/state in HOME. A value that is no absolute path counts as none.
Folders UserFolders();

// Makes `folder` and the folders above it where they are missing, for the user
// alone. Raises when one cannot be made.
void MakeFolders(const std::filesystem::path& folder);

}  // namespace korvane::posix
