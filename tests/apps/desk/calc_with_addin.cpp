#include "calc_with_addin.h"

#include <sstream>

namespace korvane::test {

namespace {

std::vector<std::string> Environment(const std::filesystem::path& folder,
                                     std::vector<std::string> more) {
    more.push_back(std::string("KORVANE_VIEW=") + KORVANE_VIEW);
    more.push_back("XDG_CONFIG_HOME=" + (folder / "config").string());
    more.push_back("XDG_STATE_HOME=" + (folder / "state").string());
    return more;
}

}  // namespace

CalcWithAddin::CalcWithAddin(const Desktop& desktop, const std::filesystem::path& folder,
                             const std::filesystem::path& book,
                             const std::vector<std::string>& environment)
    : DesktopOffice(desktop, folder,
                    {{KORVANE_COMPONENT, "org.korvane.office.Addin", "korvane_office_addin", true},
                     {KORVANE_COMPONENT, "org.korvane.office.AddinJob", "korvane_office_addin_job",
                      false, true},
                     {KORVANE_COMPONENT, "org.korvane.office.Commands", "korvane_office_commands"},
                     {KORVANE_PROBE, "org.korvane.test.Probe", "korvane_test_probe", false, true}},
                    {book.string()}, Environment(folder, environment)) {
    // The add-in starts when a spreadsheet's window has the keyboard.
    const auto known = [](const std::string& answer) { return answer != "no"; };
    ready_ = DesktopOffice::ready() && Focus(book.filename().string()) &&
             AskUntil("addin", known) == "yes";
}

bool CalcWithAddin::Activate(const std::string& book) {
    const auto isActive = [&](const std::string& state) { return state.starts_with(book + " "); };
    return Focus(book) && isActive(AskUntil("state", isActive));
}

std::vector<pid_t> CalcWithAddin::Views() const {
    std::vector<pid_t> views;
    std::istringstream ids(OutputOf("pgrep -x korvane-view -P " + std::to_string(id())));
    for (pid_t id = 0; ids >> id;) views.push_back(id);
    return views;
}

int CalcWithAddin::Windows(const std::string& title, int count) const {
    int found = 0;
    Until([&] {
        std::istringstream ids(
            desktop().Do("search --onlyvisible --name '^" + title + "$' 2>/dev/null"));
        found = 0;
        for (std::string id; ids >> id;) ++found;
        return found == count;
    });
    return found;
}

}  // namespace korvane::test
