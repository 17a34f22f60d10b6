// Where a document has formulas.
#pragma once

#include <string>
#include <vector>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// The external addresses of all cells that hold a formula, sheet by sheet and row
// by row. Throws korvane::Error when the document has been closed.
std::vector<std::u16string> FormulaCells(const DocumentPtr& document);

}  // namespace korvane::calc
