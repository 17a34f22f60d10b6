// Workbooks as flat ODF texts.
#pragma once

#include <string>
#include <vector>

namespace korvane::calc::testing {

// One sheet: cells by their places. A content that begins with "=" is a formula
// in the office's file spelling ("=SUM([.A1:.A3])"), with "{=" an array formula
// of one cell; "TRUE" and "FALSE" are Booleans, what reads as a number is one.
struct TestSheet {
    struct Cell {
        int row;     // 1-based, ascending
        int column;  // 1-based, ascending within a row
        std::string content;
        std::string style = {};  // "date", "yellow", "open" (not protected)
        int arrayRows = 1;
        int arrayColumns = 1;
    };
    std::string name;
    std::vector<Cell> cells;
    bool isProtected = false;
    bool hidden = false;
    std::vector<int> hiddenRows = {};
    std::vector<int> hiddenColumns = {};
};

struct TestName {
    std::string name;
    std::string expression;  // "[$Data.$B$2]"
    std::string sheet = {};  // the sheet that it belongs to; empty: the document
};

// The text of the file.
std::string FlatText(const std::vector<TestSheet>& sheets, const std::vector<TestName>& names = {},
                     const std::string& spreadsheetAttributes = {});

}  // namespace korvane::calc::testing
