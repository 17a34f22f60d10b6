// One cell as it was, to be put back exactly.
#pragma once

#include <com/sun/star/sheet/FormulaToken.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <optional>
#include <string>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/noted_formula.h"

namespace korvane::calc {

class Silence;

// Remembers the content of the cell whose formula was read last. While another
// formula stands in that cell, what is remembered stays.
class KeptCell {
public:
    // The cell's formula text was read as `shown`.
    void Remember(const CellAddress& at,
                  const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell,
                  const std::u16string& shown);
    // Whether `shown` is what was read from the cell.
    bool Holds(const CellAddress& at, const std::u16string& shown) const;
    bool HoldsCell(const CellAddress& at) const;
    // The cell in which something else stands than what is remembered.
    std::optional<CellAddress> ChangedCell() const;
    // Whether the office can calculate the remembered formula again. A file may
    // hold the value of a formula that Calc does not understand: written once,
    // such a value would be lost.
    bool CanBePutBack(const OpCodes& codes) const;
    // `written` is about to be written into the remembered cell.
    void MarkChanged(const CalcDocument& document, const std::u16string& written);
    // It stands there now.
    void NoteWritten(const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell);
    NotedFormula& noted() { return noted_; }

    // Puts the remembered content back: tokens, array or not, number format.
    // Throws when the cell does not take it.
    void PutBack(const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell,
                 Silence& silence, const OpCodes& codes);

private:
    struct Content {
        CellAddress at;
        std::u16string shown;
        rtl::OUString formula;  // the office's own text of it
        sal_Int32 error = 0;
        Tokens tokens;
        bool isFormula = false;
        bool isArray = false;
        sal_Int32 numberFormat = 0;
        bool hasOwnFormat = false;
    };
    std::optional<Content> content_;
    bool changed_ = false;
    NotedFormula noted_;
};

}  // namespace korvane::calc
