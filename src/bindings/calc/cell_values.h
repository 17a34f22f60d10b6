// Cells' contents as the host's values.
#pragma once

#include <com/sun/star/table/XCell.hpp>

#include "base/value.h"
#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// The value of one cell, with its type: a Boolean and a date are numbers with
// such a format.
Value ValueOf(const CalcDocument& document,
              const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell);

// The same of a scratch cell's formula: its number format says nothing, dates
// are plain numbers.
Value ResultOf(const CalcDocument& document,
               const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell);

// The text in a cell, whose content or result is one, without its number format.
std::u16string TextIn(const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell);

// What the cell displays.
std::u16string DisplayedText(
    const com::sun::star::uno::Reference<com::sun::star::table::XCell>& cell);

}  // namespace korvane::calc
