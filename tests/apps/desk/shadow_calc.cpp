#include "shadow_calc.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> Copies(const fs::path& folder, const std::vector<fs::path>& books) {
    fs::create_directories(folder);
    std::vector<std::string> copies;
    for (const fs::path& book : books) {
        const fs::path copy = folder / book.filename();
        fs::copy_file(book, copy);
        copies.push_back(copy.string());
    }
    return copies;
}

}  // namespace

ShadowCalc::ShadowCalc(const Desktop& desktop, const fs::path& folder,
                       const std::vector<fs::path>& books)
    : DesktopOffice(desktop, folder,
                    {{KORVANE_PROBE, "org.korvane.test.Probe", "korvane_test_probe", false, true}},
                    Copies(folder, books)),
      folder_(folder) {}

}  // namespace korvane::test
