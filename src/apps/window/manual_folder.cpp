#include "apps/window/manual_folder.h"

#include <system_error>

namespace korvane::window {
namespace {

namespace fs = std::filesystem;

fs::path ProgramFolder() {
    std::error_code failed;
    return fs::read_symlink("/proc/self/exe", failed).parent_path();
}

}  // namespace

fs::path ManualFolder(const fs::path& addinFolder) {
    const fs::path own = addinFolder.empty() ? ProgramFolder() : addinFolder;
    if (own.empty()) return {};
    const fs::path shared = "share/doc/korvane/manual";
    for (const fs::path& folder : {own / "manual", own / ".." / shared, own / "../.." / shared}) {
        std::error_code failed;
        if (fs::is_regular_file(folder / "index.html", failed)) return folder.lexically_normal();
    }
    return {};
}

}  // namespace korvane::window
