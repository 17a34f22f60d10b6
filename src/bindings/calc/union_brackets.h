// Unions in Excel's spelling.
#pragma once

#include <vector>

#include "bindings/calc/formula_text.h"

namespace korvane::calc {

// The tokens with brackets round every union that has none. Excel joins ranges
// by the sign that also separates arguments, so that there a union cannot do
// without them; the office's own formulas can.
std::vector<Token> WithUnionBrackets(std::vector<Token> tokens, const OpCodes& codes);

}  // namespace korvane::calc
