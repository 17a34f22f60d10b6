// The fill of cells as it is exactly: its colour, and whether it is their own.
#pragma once

#include <com/sun/star/table/CellRangeAddress.hpp>
#include <optional>
#include <vector>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

constexpr sal_Int32 kNoFill = -1;

// The office's colour (red first), kNoFill for none. A fill that is not the
// cell's own comes from its style, and changes with it.
struct Fill {
    sal_Int32 color = kNoFill;
    bool isOwn = false;
    friend bool operator==(const Fill&, const Fill&) = default;
};

using CellBlock = com::sun::star::table::CellRangeAddress;

// Cells that have one fill. They follow their places as rows and sheets move.
struct FilledCells {
    com::sun::star::uno::Reference<com::sun::star::uno::XInterface> cells;
    Fill fill;
};

// The fills of some cells; of none when the cells are gone.
struct Fills {
    std::vector<FilledCells> parts;

    // All cells have the same fill.
    bool AreOne() const;
    // The same fills at the same places. False when cells are gone.
    bool AreSame(const Fills& other) const;
    // They look the same, wherever it comes from.
    bool LookAlike() const;
};

bool IsSame(const CellBlock& a, const CellBlock& b);
// The cells that both have.
std::optional<CellBlock> Meet(const CellBlock& a, const CellBlock& b);
CellBlock BlockOf(const CellRangeRef& cells);
// Of cells that may be several blocks.
std::vector<CellBlock> BlocksOf(
    const com::sun::star::uno::Reference<com::sun::star::uno::XInterface>& cells);
CellRangeRef CellsAt(const CalcDocument& document, const CellBlock& block);

// All members throw the office's exceptions.
Fills FillsOf(const CellRangeRef& cells);
// The blocks of `cells` that have exactly `fill`.
std::vector<CellBlock> BlocksWith(const CellRangeRef& cells, const Fill& fill);

bool IsProtected(const CalcDocument& document, int sheet);

// Gives the cells of `block` a fill, and leaves no trace of having written.
void WriteFill(const CalcDocument& document, const CellBlock& block, const Fill& fill);
// Gives them the fills that they had when `fills` was read.
void WriteFills(const CalcDocument& document, const CellBlock& block, const Fills& fills);

}  // namespace korvane::calc
