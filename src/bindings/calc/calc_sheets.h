// A Calc document as a workbook, and its sheets.
#pragma once

#include "bindings/calc/calc_document.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane::calc {

class CalcWorkbook : public host::Workbook {
public:
    explicit CalcWorkbook(DocumentPtr document) : document_(std::move(document)) {}

    std::u16string Name() override;
    std::u16string Path() override;
    host::NamesPtr Names() override;
    // Does nothing where the document has no window.
    void Activate() override;

private:
    DocumentPtr document_;
};

class CalcWorksheet : public host::Worksheet {
public:
    CalcWorksheet(DocumentPtr document, SheetRef sheet)
        : document_(std::move(document)), sheet_(std::move(sheet)) {}

    std::u16string Name() override;
    host::WorkbookPtr Parent() override;
    host::NamesPtr Names() override;
    bool ProtectContents() override;
    void Activate() override;

private:
    DocumentPtr document_;
    SheetRef sheet_;
};

}  // namespace korvane::calc
