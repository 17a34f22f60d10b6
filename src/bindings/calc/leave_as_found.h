// What an add-in could not put back itself.
#pragma once

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// A formula that was written for a moment and still stands in its cell goes, and the
// cell is as it was. Never throws.
void PutBackFormula(const CalcDocument& document) noexcept;

// The same, and the tints that are still on go, too. Never throws.
void LeaveAsFound(const CalcDocument& document) noexcept;

}  // namespace korvane::calc
