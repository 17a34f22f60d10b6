// Free cells of a sheet, where expressions are evaluated.
#pragma once

#include "base/value.h"
#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/free_cells.h"
#include "bindings/calc/silence.h"

namespace korvane::calc {

// The place of scratch cells on one sheet, for one evaluation. Everything that
// is written there is silenced, and gone again when the Content goes.
class Scratch {
public:
    // How large a block can be.
    static constexpr int kMostRows = FreeCells::kRows;
    static constexpr int kMostColumns = FreeCells::kColumns;

    // `at` is the lower left of free cells.
    Scratch(const CalcDocument& document, const CellAddress& at);

    // The cell that a single formula is written into.
    const CellAddress& at() const { return at_; }
    // Whether a block of cells has one of these cells in it.
    bool Touches(const Block& block) const;
    // A protected sheet takes single plain formulas only.
    bool isProtected() const { return isProtected_; }

    class Content {
    public:
        Content(Scratch& scratch, const Tokens& tokens, int rows, int columns);
        ~Content();
        Content(const Content&) = delete;
        Content& operator=(const Content&) = delete;

        const CellRangeRef& cells() const { return cells_; }
        com::sun::star::uno::Reference<com::sun::star::table::XCell> Cell(int row = 0,
                                                                          int column = 0) const;

    private:
        void Clear();

        Scratch& scratch_;
        CellRangeRef cells_;
        sal_Int32 formatBefore_ = 0;
    };

private:
    Silence silence_;
    SheetRef sheet_;
    CellAddress at_;
    bool isProtected_ = false;
};

}  // namespace korvane::calc
