// The menus and the toolbar of Calc's windows as command bars.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>

#include "bindings/calc/desk/command_table.h"
#include "host/command_bars.h"

namespace korvane::calc {

class OwnControls;

// "Worksheet Menu Bar" is the menu bar of all spreadsheet windows, in it the
// Tools menu (Id 30007) and its Detective submenu (Id 30028). Calc has no toolbar
// for formula auditing: "Formula Auditing" is its standard toolbar, which is the
// one that users have on their screens. Other entries of Calc's own have the Id 0;
// none of them can be changed.
//
// What is added is in the running office only and never in the user's profile.
// Changes show when the caller has returned to the office, and at once with
// FindControl; a failure to show them is raised there.
class CalcCommandBars : public host::CommandBars {
public:
    // Clicks arrive through `commands`. Throws korvane::Error when the office has
    // no menus.
    CalcCommandBars(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        std::shared_ptr<CommandTable> commands);
    // Closes.
    ~CalcCommandBars() override;
    CalcCommandBars(const CalcCommandBars&) = delete;
    CalcCommandBars& operator=(const CalcCommandBars&) = delete;
    // Takes away everything that was added; afterwards all handles raise. Nothing
    // happens the second time.
    void Close() noexcept;

    host::CommandBarPtr Item(const std::u16string& name) override;
    host::CommandBarControlPtr FindControl(const std::u16string& tag) override;

private:
    std::shared_ptr<OwnControls> controls_;
};

}  // namespace korvane::calc
