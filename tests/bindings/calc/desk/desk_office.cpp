#include "desk_office.h"

namespace korvane::test {

DeskOffice::DeskOffice(const Desktop& desktop, const std::filesystem::path& folder)
    : DesktopOffice(
          desktop, folder,
          {{KORVANE_DESK_COMPONENT, "org.korvane.office.Addin", "korvane_desk_addin", true, true},
           {KORVANE_DESK_COMPONENT, "org.korvane.office.Commands", "korvane_desk_commands"}},
          {"--calc"}) {
    ready_ = DesktopOffice::ready() && Focus("Untitled 1");
}

std::string DeskOffice::Log(const std::string& wanted) {
    std::string log;
    AskUntil("log", [&](const std::string& answer) {
        log += answer;
        return log.find(wanted) != std::string::npos;
    });
    return log;
}

}  // namespace korvane::test
