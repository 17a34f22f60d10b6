#include "apps/desk/view_place.h"

#include <unistd.h>

#include <cstdlib>

namespace korvane::desk {

namespace fs = std::filesystem;

std::vector<std::string> ViewCommand(const fs::path& componentFolder) {
    const char* const named = std::getenv("KORVANE_VIEW");
    if (named != nullptr && *named != '\0') return {named};
    // An extension carries it in its own folder; else it is one of the programs
    // above lib/korvane.
    const fs::path beside = componentFolder / "korvane-view";
    if (::access(beside.c_str(), X_OK) == 0) return {beside.string()};
    return {(componentFolder.parent_path().parent_path() / "bin/korvane-view").string()};
}

}  // namespace korvane::desk
