// References in the R1C1 style, as INDIRECT takes them in a text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::calc {

// The text with its relative rows and columns ("R[-1]C") counted from a cell,
// row and column 1-based: it then means the same wherever it is read. Nothing
// for a text that is no such reference, or that has nothing relative in it.
// A place beyond the sheet gives "#REF!".
std::optional<std::u16string> WithoutRelative(std::u16string_view text, std::int32_t row,
                                              std::int32_t column);

}  // namespace korvane::calc
