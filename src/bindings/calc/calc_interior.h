// The fill of cells.
#pragma once

#include "bindings/calc/calc_document.h"
#include "host/range.h"

namespace korvane::calc {

class CalcInterior : public host::Interior {
public:
    CalcInterior(DocumentPtr document, CellRangeRef cells)
        : document_(std::move(document)), cells_(std::move(cells)) {}

    korvane::Value ColorIndex() override;
    void SetColorIndex(const korvane::Value& index) override;
    korvane::Value Color() override;
    // Raises on a protected sheet.
    void SetColor(double color) override;

private:
    // The office's colour (red first), -1 for none; nothing when cells differ.
    std::optional<sal_Int32> Fill() const;
    void SetFill(sal_Int32 fill);

    DocumentPtr document_;
    CellRangeRef cells_;
};

}  // namespace korvane::calc
