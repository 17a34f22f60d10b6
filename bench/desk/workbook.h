// The workbook that the benchmark explores.
#pragma once

#include <string>

namespace korvane::bench {

// What is explored: cells in column E of its only sheet, each a sum of
// groups such as IF(A2>50,INDEX(A$1:A$40,B2),SUM(C1:C2)*2), of these parts.
inline constexpr int kParts[] = {10, 100, 1000};
// A cell of plain references, one after the other, each to another row.
inline constexpr const char* kWalkedCell = "E9";
inline constexpr int kWalkedRows = 40;

// The cell with that many parts, about: the groups stay whole.
std::string CellOf(int parts);

// The text of the file: flat ODF.
std::string WorkbookText();

}  // namespace korvane::bench
