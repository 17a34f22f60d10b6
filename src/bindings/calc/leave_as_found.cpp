#include "bindings/calc/leave_as_found.h"

#include "base/attempt.h"
#include "bindings/calc/automatic_calculation.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/kept_cell.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/tint_ledger.h"

namespace korvane::calc {

void PutBackFormula(const CalcDocument& document) noexcept {
    Suppressed([&] {
        const auto at = document.kept().ChangedCell();
        if (!at || document.IsClosed()) return;
        const auto cell = document.Sheet(at->Sheet)->getCellByPosition(at->Column, at->Row);
        Silence silence(document);
        const AutomaticCalculation automatic(document);
        document.kept().PutBack(cell, silence, document.formulas().codes());
    });
}

void LeaveAsFound(const CalcDocument& document) noexcept {
    PutBackFormula(document);
    if (!document.IsClosed()) document.tints().Drop();
}

}  // namespace korvane::calc
