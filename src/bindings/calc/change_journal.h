// Where changes to a user's document are noted for as long as they stand, so that
// they can be taken back though the office died with them.
#pragma once

#include <string>
#include <vector>

#include "bindings/calc/fill_state.h"

namespace korvane::calc {

// Cells that were given a fill, by their places at that time.
struct FillNote {
    struct Part {
        CellBlock block;
        Fill before;
    };
    std::u16string url;  // of the document; empty when it has no file
    std::u16string sheet;
    Fill written;
    std::vector<Part> parts;
};

// A cell that was given a formula.
struct FormulaNote {
    std::u16string url;
    std::u16string sheet;
    sal_Int32 column = 0;  // from 0
    sal_Int32 row = 0;
    std::u16string before;  // the office's own text, "{=...}" for an array formula
    bool beforeIsFormula = false;
    bool hadOwnFormat = false;  // a number format of the cell's own
    std::u16string written;     // as it was asked for
    std::u16string shown;       // the office's own text of it, once it stands there
};

// None of the members throws: what cannot be noted is done all the same.
class ChangeJournal {
public:
    ChangeJournal() = default;
    ChangeJournal(const ChangeJournal&) = delete;
    ChangeJournal& operator=(const ChangeJournal&) = delete;
    virtual ~ChangeJournal() = default;

    // To be called before the change. The note's number, 0 when it was not taken.
    virtual long Note(const FillNote& note) noexcept = 0;
    virtual long Note(const FormulaNote& note) noexcept = 0;
    // The formula of note `number` stands in its cell and reads `shown`.
    virtual void Complete(long number, const std::u16string& shown) noexcept = 0;
    // The change has been taken back.
    virtual void Forget(long number) noexcept = 0;
};

}  // namespace korvane::calc
