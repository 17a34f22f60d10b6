// What can be told of a formula by looking at its tokens, without evaluating it.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "base/value.h"
#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/token_places.h"

namespace korvane::calc {

class TokenShape {
public:
    explicit TokenShape(const OpCodes& codes);

    // The cells, when the tokens are one plain reference.
    std::optional<Place> PlainReference(const Tokens& tokens, const CellAddress& at) const;
    // The value, when the tokens are one number or one text.
    std::optional<Value> PlainConstant(const Tokens& tokens) const;
    // Whether a value is certainly no reference, or certainly no array: then the
    // office need not be asked, which costs further evaluations.
    bool IsNeverReference(const Tokens& tokens) const;
    bool IsNeverArray(const Tokens& tokens) const;
    // The tokens, which were read at `cell`, so that they mean the same wherever
    // they are evaluated: references become absolute, and ROW(), COLUMN(),
    // SHEET() and CELL("…") ask about `cell` where they name none themselves.
    Tokens Settled(const Tokens& tokens, const CellAddress& cell) const;

    // A call among tokens: from its function up to its ")".
    struct Call {
        sal_Int32 first = 0;
        sal_Int32 close = 0;
        std::vector<sal_Int32> separators;  // between its own arguments
    };
    // The calls of functions that make a reference out of texts and numbers
    // (INDIRECT and OFFSET), or of INDIRECT alone.
    std::vector<Call> ReferringCalls(const Tokens& tokens) const;
    std::vector<Call> IndirectCalls(const Tokens& tokens) const;

private:
    // The same of the tokens from `first` up to `last`, which is not among them.
    bool IsNeverReference(const Tokens& tokens, sal_Int32 first, sal_Int32 last) const;
    // Whether the range at `at` is a whole argument of a function that reads
    // ranges and gives one value for them.
    bool IsReadAsWhole(const Tokens& tokens, sal_Int32 at,
                       const std::vector<sal_Int32>& opened) const;
    std::vector<Call> CallsOf(const std::set<sal_Int32>& functions, const Tokens& tokens) const;
    sal_Int32 MatchingClose(const Tokens& tokens, sal_Int32 open, int& separators) const;

    const OpCodes& codes_;
    // Kinds of functions; `named_` are all functions and operators.
    std::set<sal_Int32> referring_, reducing_, spreading_, choosing_, lookingUp_, aboutOwnCell_,
        if_, making_, indirect_;
    std::set<sal_Int32> named_;
};

}  // namespace korvane::calc
