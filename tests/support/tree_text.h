// A tree as text, so that a test shows what it expects as a reader would see it.
#pragma once

#include <string>

#include "formula/element.h"

namespace korvane::test {

// One line per element, two blanks of indent per level:
//   "name | text @lPos | location | value", with the range of the element behind
// the location as <B2:B9> when it has one. Empty columns stay empty.
std::string TreeText(const CElement& root);

}  // namespace korvane::test
