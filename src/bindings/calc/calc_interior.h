// The fill of cells.
#pragma once

#include "bindings/calc/calc_document.h"
#include "bindings/calc/fill_state.h"
#include "host/range.h"

namespace korvane::calc {

class CalcInterior : public host::Interior {
public:
    CalcInterior(DocumentPtr document, CellRangeRef cells)
        : document_(std::move(document)), cells_(std::move(cells)) {}

    // An entry of the palette for exactly its colour, the host's "none" for cells
    // that nobody has given a fill; any other state has an index of the document's
    // own, and writing that index restores the state exactly.
    korvane::Value ColorIndex() override;
    // Raises on a protected sheet.
    void SetColorIndex(const korvane::Value& index) override;
    korvane::Value Color() override;
    // Raises on a protected sheet.
    void SetColor(double color) override;

private:
    // The office's colour, nothing when the cells differ.
    std::optional<sal_Int32> Color(const Fills& fills) const;
    void RequireWritable() const;

    DocumentPtr document_;
    CellRangeRef cells_;
};

}  // namespace korvane::calc
