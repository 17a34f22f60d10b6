#include "apps/command/view_program.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "apps/command/document.h"

namespace korvane::command {

namespace fs = std::filesystem;

std::vector<std::string> FindView() {
    const char* const named = std::getenv("KORVANE_VIEW");
    if (named != nullptr && *named != '\0') {
        if (access(named, X_OK) == 0) return {fs::absolute(named).string()};
        throw CommandError(kHostLost, std::string("KORVANE_VIEW names no program: ") + named);
    }
    std::error_code failed;
    const fs::path self = fs::read_symlink("/proc/self/exe", failed);
    const std::string view = (self.parent_path() / "korvane-view").string();
    if (!failed && access(view.c_str(), X_OK) == 0) return {view};
    throw CommandError(kHostLost, "the window could not be shown: " + view +
                                      " is missing. Build or install korvane with its windows.");
}

}  // namespace korvane::command
