// The office's version as hosts tell theirs.
#pragma once

#include <string>

namespace korvane::calc {

// A host whose version begins with 12 or more is known to draw its commands as a
// ribbon, for which others build the buttons. Calc has menus and toolbars whatever
// its version; and it counts by years since 2024: "24.2" is answered as "0.24.2".
std::u16string HostVersion(const std::u16string& office);

}  // namespace korvane::calc
