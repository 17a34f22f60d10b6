// A Calc with a workbook and the add-in in it.
#pragma once

#include "support/desktop_office.h"

namespace korvane::test {

// What the documents hold is asked by the orders of desk_probe.cpp.
class CalcWithAddin : public DesktopOffice {
public:
    CalcWithAddin(const Desktop& desktop, const std::filesystem::path& folder,
                  const std::filesystem::path& book,
                  const std::vector<std::string>& environment = {});

    // The book's window has the keyboard, and the add-in's menu is there.
    bool ready() const { return ready_; }
    // Gives the book's window the keyboard, and waits until Calc takes it for the one
    // that its user works in: the desktop knows sooner.
    bool Activate(const std::string& book);
    // Waits until it is so, or for a while; whether it is.
    using DesktopOffice::Until;
    // The processes that show the add-in's windows.
    std::vector<pid_t> Views() const;
    // Windows with this title that can be seen, once there are `count`; or after
    // a while, as many as there are.
    int Windows(const std::string& title, int count) const;

private:
    bool ready_ = false;
};

}  // namespace korvane::test
