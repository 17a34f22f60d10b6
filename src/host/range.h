// A cell or a block of cells.
#pragma once

#include <cstdint>
#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

// How Range::Address writes a reference (always in the A1 style).
struct AddressForm {
    bool RowAbsolute = true;
    bool ColumnAbsolute = true;
    bool External = false;  // with workbook and sheet: [Book1.xls]Sheet1!$B$2
};

inline constexpr AddressForm kRelative{false, false, false};  // B2:C3
inline constexpr AddressForm kExternal{true, true, true};     // [Book1.xls]Sheet1!$B$2:$C$3

class Range : public Object {
public:
    std::u16string TypeName() const override { return u"Range"; }

    // The formula text as typed (with "="), or the constant as text; of a block
    // the array of them. Needed for the explored cell.
    virtual korvane::Value Formula() = 0;
    // Writes the cell's formula. Raises for a text that the host refuses, on a
    // protected cell, and on a part of a larger array formula. Only precise
    // evaluation writes. A text that was read from this cell before restores the
    // cell exactly, its number format included.
    virtual void SetFormula(const std::u16string& formula) = 0;
    // The same of the array formula of a cell that has one; a put into a part of
    // a block of several cells raises.
    virtual korvane::Value FormulaArray() = 0;
    virtual void SetFormulaArray(const std::u16string& formula) = 0;
    // Whether the cells are part of an array formula.
    virtual bool HasArray() = 0;
    // The whole block of the array formula that the cell belongs to. Raises when
    // it belongs to none.
    virtual RangePtr CurrentArray() = 0;

    // The cell's value; of a block the array of values. May be large: ask
    // CountLarge first.
    virtual korvane::Value Value() = 0;
    // The number of cells (up to all of a sheet's).
    virtual std::int64_t CountLarge() = 0;
    // The value as the host displays it; null for a block whose cells differ. An
    // error may come as an error value or as its displayed text.
    virtual korvane::Value Text() = 0;

    // The reference text: whole columns as A:A, whole rows as 1:1, an external
    // one with quotes where the host writes them ('[B.xls]My Sheet'!$A$1).
    virtual std::u16string Address(const AddressForm& form) = 0;
    // The sheet that holds the range.
    virtual WorksheetPtr Worksheet() = 0;
    // The defined name that refers to exactly this range; null when there is
    // none, the usual case. (The object model raises then.)
    virtual NamePtr Name() = 0;

    // The whole rows or columns of the range; callers ask for their Hidden.
    virtual RangePtr EntireRow() = 0;
    virtual RangePtr EntireColumn() = 0;
    // Of an entire row or column: True or False, null when only some of the rows
    // or columns are hidden. Raises for any other range.
    virtual korvane::Value Hidden() = 0;

    // The cells' fill.
    virtual InteriorPtr Interior() = 0;
    // Selects the range on its sheet, which must be the active one.
    virtual void Select() = 0;
    // Makes the range's first cell the active one.
    virtual void Activate() = 0;
};

// The fill of a range's cells.
class Interior : public Object {
public:
    std::u16string TypeName() const override { return u"Interior"; }

    // The fill's place in the palette (1–56), -4142 for none, -4105 for
    // automatic; null when the cells differ.
    virtual korvane::Value ColorIndex() = 0;
    virtual void SetColorIndex(const korvane::Value& index) = 0;
    // The fill's colour as red + 256 * green + 65536 * blue; null when the cells
    // differ.
    virtual korvane::Value Color() = 0;
    virtual void SetColor(double color) = 0;
};

}  // namespace korvane::host
