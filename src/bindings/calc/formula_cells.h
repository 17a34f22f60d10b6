// Where a document has formulas.
#pragma once

#include <string>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"

namespace korvane::calc {

// The external addresses of all cells that hold a formula, sheet by sheet and row
// by row. Throws korvane::Error when the document has been closed.
std::vector<std::u16string> FormulaCells(const DocumentPtr& document);

// Whether a cell with these tokens holds a constant: of Excel's Booleans and
// errors the office makes formulas when it reads the workbook.
bool IsConstantOfExcel(const CalcDocument& document, const Tokens& tokens);

}  // namespace korvane::calc
