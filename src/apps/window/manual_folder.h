// Where the manual lies.
#pragma once

#include <filesystem>

namespace korvane::window {

// The folder of the manual that belongs to an add-in in `addinFolder`: "manual"
// within that, or share/doc/korvane/manual beside the folder that it was
// installed in, such as lib/korvane or bin. Looked for beside the running program
// when the add-in lies nowhere. Empty when there is none.
std::filesystem::path ManualFolder(const std::filesystem::path& addinFolder);

}  // namespace korvane::window
