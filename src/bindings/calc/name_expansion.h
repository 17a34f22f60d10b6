// Defined names whose meaning depends on where they are used.
#pragma once

#include <string>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

struct ExpandedNames {
    std::u16string text;
    // A name, or a name within it, reaches outside the document: the text must
    // not be evaluated.
    bool outside = false;
};

// The formula text with names that hold relative references replaced by what
// they stand for at the active cell: a scratch cell would see them from its own
// place.
ExpandedNames ExpandNames(const CalcDocument& document, const std::u16string& text);

}  // namespace korvane::calc
