// Workbooks as Excel's files that tests make themselves: what the office makes of
// them differs from what it makes of its own.
#pragma once

#include <string>
#include <vector>

namespace korvane::calc::testing {

struct ExcelCell {
    std::string place;        // "A1", row by row
    std::string content;      // "=SUM(A2:A3)", "TRUE", "#N/A", a number or a text
    std::string result = {};  // the number that the file holds as a formula's result
};

struct ExcelSheet {
    std::string name;
    std::vector<ExcelCell> cells;
    std::string height = {};  // of all rows that have cells, in points; "" for none said
};

// The file's bytes. `settings` is what the workbook says behind its sheets, such
// as "<calcPr calcMode=\"manual\"/>".
std::string ExcelFile(const std::vector<ExcelSheet>& sheets, const std::string& settings = {});

}  // namespace korvane::calc::testing
