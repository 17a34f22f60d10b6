// A workbook with every kind of fill, and with a formula that takes its time.
#pragma once

#include <filesystem>

namespace korvane::test {

// Main!B2 refers to cells without a fill, with one of their own, with different
// ones, with one from their style, and with one from a condition; Main!B3 is evaluated
// precisely in about half a second; Main!B4 follows from it. There are a hidden and
// a protected sheet. The text form of the office's own format.
void WritePaintedBook(const std::filesystem::path& path);

}  // namespace korvane::test
