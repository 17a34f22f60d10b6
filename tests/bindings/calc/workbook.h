// Workbooks that tests open inside the office.
#pragma once

#include <memory>
#include <string>

#include "bindings/calc/calc_application.h"
#include "document_state.h"
#include "flat_file.h"
#include "host/range.h"

namespace korvane::calc::testing {

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

    // Everything that exploring must leave as it is.
    std::string Snapshot() const;

private:
    com::sun::star::uno::Reference<com::sun::star::frame::XModel> model_;
    std::unique_ptr<CalcApplication> application_;
};

// A value as a test writes it: "6", "\"text\"", "True", "#N/A", "Other!$A$1:$B$2"
// for a reference, "{1,2;3,4}" for an array, "empty", "null".
std::string Shown(const Value& value);

}  // namespace korvane::calc::testing
