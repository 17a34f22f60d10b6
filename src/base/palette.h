// The workbook's default palette of 56 colours, as Excel documents it for
// Interior.ColorIndex. A colour is red + 256 * green + 65536 * blue.
#pragma once

#include <optional>

namespace korvane {

// The colour of an entry, 1 to 56; nothing outside.
std::optional<double> PaletteColor(int index);

// The entry that is nearest to a colour (the first of equals): what a host
// answers as ColorIndex for a colour outside its palette.
int NearestPaletteIndex(double color);

}  // namespace korvane
