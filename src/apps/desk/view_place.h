// Where the program is that shows the windows.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::desk {

// The command that starts it: KORVANE_VIEW, the file beside the component, or the
// one that is installed with it. The last one also when it is missing.
std::vector<std::string> ViewCommand(const std::filesystem::path& componentFolder);

}  // namespace korvane::desk
