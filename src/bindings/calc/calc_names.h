// Defined names.
#pragma once

#include <com/sun/star/sheet/XNamedRange.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>
#include <optional>

#include "bindings/calc/calc_document.h"
#include "host/name.h"

namespace korvane::calc {

class CalcName : public host::Name {
public:
    using NamedRef = com::sun::star::uno::Reference<com::sun::star::sheet::XNamedRange>;

    // `sheet` is the name of the sheet that the name belongs to, if it does.
    CalcName(DocumentPtr document, NamedRef name, std::optional<std::u16string> sheet)
        : document_(std::move(document)), name_(std::move(name)), sheet_(std::move(sheet)) {}

    std::u16string Name_() override;
    // Relative references in it are written as they are seen from the active cell.
    std::u16string RefersTo() override;

private:
    DocumentPtr document_;
    NamedRef name_;
    std::optional<std::u16string> sheet_;
};

class CalcNames : public host::Names {
public:
    // The names of the whole document, or those of one sheet.
    explicit CalcNames(DocumentPtr document, SheetRef sheet = {})
        : document_(std::move(document)), sheet_(std::move(sheet)) {}

    host::NamePtr Item(std::u16string_view text) override;

private:
    DocumentPtr document_;
    SheetRef sheet_;
};

// The office's own object of a name as a formula on that sheet sees it: the
// sheet's own before the document's; null when there is none.
CalcName::NamedRef FindNamedRange(const CalcDocument& document, int sheet,
                                  std::u16string_view name);

// The name that refers to exactly these cells: the sheet's own before the
// document's; null when there is none.
host::NamePtr NameOfCells(const DocumentPtr& document, const CellRangeRef& cells);

}  // namespace korvane::calc
