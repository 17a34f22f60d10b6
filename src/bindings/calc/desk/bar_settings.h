// One menu bar or toolbar of the spreadsheet windows.
#pragma once

#include <com/sun/star/ui/XModuleUIConfigurationManager2.hpp>
#include <functional>
#include <string>

#include "bindings/calc/desk/bar_entries.h"

namespace korvane::calc {

// Changes are collected, because the office builds a bar anew in every window
// for each write. Nothing is stored in the user's profile. All members throw the
// office's own exceptions.
class BarSettings {
public:
    using Manager =
        com::sun::star::uno::Reference<com::sun::star::ui::XModuleUIConfigurationManager2>;

    // `url` names the bar ("private:resource/menubar/menubar").
    BarSettings(const Manager& manager, std::u16string url);

    // The entries with the changes that are not written yet.
    EntriesPtr Read() const;
    // The entries to be changed; Write makes the changes seen.
    ChangingEntriesPtr Change();
    // A container for the entries of a new submenu of this bar.
    ChangingEntriesPtr NewSubmenu();
    // Writes the changes; true when there were any. A bar that reads as the
    // office's own again becomes that again, so that no trace of the changes is
    // left with the office either.
    bool Write();

private:
    Manager manager_;
    rtl::OUString url_;
    ChangingEntriesPtr changed_;  // null when there is nothing to write
    std::u16string officesOwn_;   // described; empty when the user has another bar
};

}  // namespace korvane::calc
