// What can be told of a formula by looking at its tokens, without evaluating it.
#pragma once

#include <optional>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"

namespace korvane::calc {

// Cells of one sheet; the sheet counted from 0.
struct Place {
    int sheet = 0;
    Area area;
};

class TokenShape {
public:
    explicit TokenShape(const OpCodes& codes) : codes_(codes) {}

    // The cells, when the tokens are one plain reference.
    std::optional<Place> PlainReference(const Tokens& tokens, const CellAddress& at) const;
    // Whether a value is certainly no reference, or certainly no array: then the
    // office need not be asked, which costs further evaluations.
    bool IsNeverReference(const Tokens& tokens) const;
    bool IsNeverArray(const Tokens& tokens) const;
    // The tokens, which were read at `at`, so that they mean the same wherever
    // they are evaluated: references become absolute, and ROW(), COLUMN(),
    // SHEET() and CELL("…") ask about `cell` where they name none themselves.
    Tokens Settled(const Tokens& tokens, const CellAddress& at, const CellAddress& cell) const;

private:
    // The same of the tokens from `first` up to `last`, which is not among them.
    bool IsNeverReference(const Tokens& tokens, sal_Int32 first, sal_Int32 last) const;
    // Whether the range at `at` is a whole argument of a function that reads
    // ranges and gives one value for them.
    bool IsReadAsWhole(const Tokens& tokens, sal_Int32 at,
                       const std::vector<sal_Int32>& opened) const;
    bool IsFunction(const Token& token, const char16_t* const* names, std::size_t count) const;
    sal_Int32 MatchingClose(const Tokens& tokens, sal_Int32 open, int& separators) const;

    const OpCodes& codes_;
};

}  // namespace korvane::calc
