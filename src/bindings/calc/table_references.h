// References to tables by their columns' names: Table1[Amount].
#pragma once

#include <string>
#include <string_view>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// The formula text with references to tables replaced by the cells that they
// mean at the active cell: Calc's parser of Excel's formulas does not read them.
// One that means nothing becomes #REF!.
std::u16string WithoutTableReferences(const CalcDocument& document, std::u16string_view text);

}  // namespace korvane::calc
