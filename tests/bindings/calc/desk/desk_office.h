// An office with a new spreadsheet and the component of this folder in it.
#pragma once

#include "support/desktop_office.h"

namespace korvane::test {

class DeskOffice : public DesktopOffice {
public:
    // Comes back when the spreadsheet's window is there and has the keyboard.
    DeskOffice(const Desktop& desktop, const std::filesystem::path& folder);

    bool ready() const { return ready_; }
    // What Ask("log") said since the last time, once that holds `wanted`; or after
    // a while.
    std::string Log(const std::string& wanted);

private:
    bool ready_ = false;
};

}  // namespace korvane::test
