// Workbooks that tests make themselves: flat ODF texts.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bindings/calc/calc_application.h"
#include "host/range.h"

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

// A workbook that is open for the time of this object.
class OpenBook {
public:
    OpenBook(const std::string& fileName, const std::string& content);
    explicit OpenBook(const std::string& path);  // a file as it is
    ~OpenBook();
    OpenBook(const OpenBook&) = delete;
    OpenBook& operator=(const OpenBook&) = delete;

    CalcApplication& application() { return *application_; }
    host::RangePtr Cell(const std::u16string& text) { return application_->FindCell(text); }
    // Makes a cell the active one, as the explored cell is.
    void GoTo(const std::u16string& text) { Cell(text)->Select(); }
    Value Evaluate(const std::u16string& text) { return application_->Evaluate(text); }
    void SetAutomaticCalculation(bool automatic);
    // Calculates every cell, also those whose values the file holds.
    void CalculateAll();
    void Close();

    // Everything that exploring must leave as it is: every cell's formula, value,
    // text, number format and fill, the modified flag, the undo and redo lists.
    std::string Snapshot() const;

private:
    com::sun::star::uno::Reference<com::sun::star::frame::XModel> model_;
    std::unique_ptr<CalcApplication> application_;
};

// The first lines in which two snapshots differ; empty when they do not.
std::string Difference(const std::string& before, const std::string& after);

// A value as a test writes it: "6", "\"text\"", "True", "#N/A", "Other!$A$1:$B$2"
// for a reference, "{1,2;3,4}" for an array, "empty", "null".
std::string Shown(const Value& value);

}  // namespace korvane::calc::testing
