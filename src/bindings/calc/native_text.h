// What only the office's own text of a formula tells: its tokens have lost it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::calc {

// The parts of a formula text that are taken from there, each kind in its order
// and in Excel's spelling.
struct NativeParts {
    std::vector<std::u16string> errors;     // outside arrays and other files' cells
    std::vector<std::u16string> arrays;     // {1,TRUE;"a",#N/A}
    std::vector<std::u16string> tables;     // Table1[Column]
    std::vector<std::u16string> externals;  // [Book.xlsx]Sheet!A1
};

NativeParts PartsOfNative(std::u16string_view native);

}  // namespace korvane::calc
