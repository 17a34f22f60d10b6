#include "bindings/calc/token_shape.h"

#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <string_view>
#include <vector>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

// Functions whose result can be a reference.
constexpr const char16_t* kReferring[] = {
    u"INDEX",  u"OFFSET",  u"INDIRECT",           u"CHOOSE", u"IF", u"IFERROR", u"IFNA", u"IFS",
    u"SWITCH", u"CURRENT", u"MULTIPLE.OPERATIONS"};
// Functions that make one value of whatever they are given. To find them is a
// matter of speed, but for those of the last line: asked for the size of their
// one value, Calc tells the size of a range that they were given.
constexpr const char16_t* kReducing[] = {
    u"SUM",        u"SUMPRODUCT", u"COUNT",    u"COUNTA",
    u"MIN",        u"MAX",        u"AVERAGE",  u"AND",
    u"OR",         u"XOR",        u"ROWS",     u"COLUMNS",
    u"AREAS",      u"NPV",        u"IRR",      u"MEDIAN",
    u"PRODUCT",    u"STDEV",      u"STDEVP",   u"VAR",
    u"VARP",       u"SUMSQ",      u"MINA",     u"MAXA",
    u"AVERAGEA",   u"SUMXMY2",    u"CORREL",   u"MDETERM",
    u"GCD",        u"LCM",        u"SUBTOTAL", u"COUNTBLANK",
    u"TEXTJOIN",   u"CONCAT",     u"SLOPE",    u"INTERCEPT",
    u"RSQ",        u"SUMX2MY2",   u"SUMX2PY2", u"CHITEST",
    u"CHISQ.TEST", u"F.TEST",     u"T.TEST",   u"FORECAST.LINEAR"};
// Functions that make arrays, or references to blocks, out of single values.
constexpr const char16_t* kSpreading[] = {
    u"INDEX", u"OFFSET", u"INDIRECT", u"MUNIT", u"CHOOSE", u"MULTIPLE.OPERATIONS", u"CURRENT"};
// Functions that give one of their arguments.
constexpr const char16_t* kIf[] = {u"IF"};
constexpr const char16_t* kChoosing[] = {u"IF", u"IFERROR", u"IFNA", u"CHOOSE"};
// Functions that look a value up in the ranges behind their first argument.
constexpr const char16_t* kLookingUp[] = {u"VLOOKUP", u"HLOOKUP", u"MATCH"};
// Functions that make a reference out of texts and numbers.
constexpr const char16_t* kIndirect[] = {u"INDIRECT"};
constexpr const char16_t* kMaking[] = {u"INDIRECT", u"OFFSET"};
constexpr const char16_t* kAboutOwnCell[] = {u"ROW", u"COLUMN", u"SHEET"};

css::sheet::SingleReference Absolute(css::sheet::SingleReference reference, const CellAddress& at) {
    namespace Flags = css::sheet::ReferenceFlags;
    if ((reference.Flags & Flags::SHEET_RELATIVE) != 0)
        reference.Sheet = at.Sheet + reference.RelativeSheet;
    if ((reference.Flags & Flags::ROW_RELATIVE) != 0)
        reference.Row = at.Row + reference.RelativeRow;
    if ((reference.Flags & Flags::COLUMN_RELATIVE) != 0) {
        reference.Column = at.Column + reference.RelativeColumn;
    }
    reference.Flags &= ~(Flags::SHEET_RELATIVE | Flags::ROW_RELATIVE | Flags::COLUMN_RELATIVE);
    reference.RelativeSheet = reference.RelativeRow = reference.RelativeColumn = 0;
    return reference;
}

}  // namespace

TokenShape::TokenShape(const OpCodes& codes) : codes_(codes) {
    // By number once: a look at a formula compares each token with all of them.
    const auto fill = [&](std::set<sal_Int32>& set, const auto& names) {
        for (const char16_t* const name : names) {
            if (const auto known = codes.byName.find(name); known != codes.byName.end())
                set.insert(known->second);
        }
    };
    fill(referring_, kReferring);
    fill(reducing_, kReducing);
    fill(spreading_, kSpreading);
    fill(choosing_, kChoosing);
    fill(lookingUp_, kLookingUp);
    fill(aboutOwnCell_, kAboutOwnCell);
    fill(if_, kIf);
    fill(making_, kMaking);
    fill(indirect_, kIndirect);
    for (const auto& [name, code] : codes.byName) named_.insert(code);
}

std::optional<Place> TokenShape::PlainReference(const Tokens& tokens, const CellAddress& at) const {
    if (tokens.getLength() != 1 || tokens[0].OpCode != codes_.push) return std::nullopt;
    const auto block = BlockOf(tokens[0], at);
    if (!block || block->firstSheet != block->lastSheet) return std::nullopt;
    return Place{block->firstSheet, block->area};
}

std::optional<Value> TokenShape::PlainConstant(const Tokens& tokens) const {
    if (tokens.getLength() != 1 || tokens[0].OpCode != codes_.push) return std::nullopt;
    const auto& data = tokens[0].Data;
    // Asked for by its type: a whole number's type would convert into a double, too.
    double number = 0;
    if (data.getValueTypeClass() == css::uno::TypeClass_DOUBLE && (data >>= number))
        return Value(number);
    rtl::OUString text;
    if (data >>= text) return Value(ToText(text));
    return std::nullopt;
}

bool TokenShape::IsNeverReference(const Tokens& tokens) const {
    return IsNeverReference(tokens, 0, tokens.getLength());
}

bool TokenShape::IsNeverReference(const Tokens& tokens, sal_Int32 first, sal_Int32 last) const {
    // IF gives one of its arguments: a reference only if one of them can be.
    int separators = 0;
    if (last - first > 3 && choosing_.count(tokens[first].OpCode) != 0 &&
        MatchingClose(tokens, first + 1, separators) == last - 1) {
        sal_Int32 start = first + 2;
        bool isFirst = if_.count(tokens[first].OpCode) != 0;  // its condition is not given
        int depth = 0;
        for (sal_Int32 k = first + 2; k < last; ++k) {
            if (tokens[k].OpCode == codes_.open) ++depth;
            const bool ends = k == last - 1 || (depth == 0 && tokens[k].OpCode == codes_.separator);
            if (tokens[k].OpCode == codes_.close) --depth;
            if (!ends) continue;
            if (!isFirst && k > start && !IsNeverReference(tokens, start, k)) return false;
            isFirst = false;
            start = k + 1;
        }
        return true;
    }
    int depth = 0;
    for (sal_Int32 k = first; k < last; ++k) {
        const Token& token = tokens[k];
        if (token.OpCode == codes_.open) {
            ++depth;
        } else if (token.OpCode == codes_.close) {
            --depth;
        } else if (depth == 0) {
            if (token.OpCode == codes_.push) {
                if (token.Data.getValueTypeClass() != css::uno::TypeClass_STRUCT) return true;
            } else if (codes_.functions.count(token.OpCode) != 0) {
                if (referring_.count(token.OpCode) == 0) return true;
            } else if (token.OpCode != codes_.range && token.OpCode != codes_.intersection &&
                       token.OpCode != codes_.join && token.OpCode != codes_.name &&
                       token.OpCode != codes_.bad) {
                // An arithmetic operator; other special tokens may be anything.
                if (named_.count(token.OpCode) != 0) return true;
            }
        }
    }
    return false;
}

bool TokenShape::IsReadAsWhole(const Tokens& tokens, sal_Int32 at,
                               const std::vector<sal_Int32>& opened) const {
    if (opened.empty() || opened.back() == 0 || at + 1 >= tokens.getLength()) return false;
    const Token& function = tokens[opened.back() - 1];
    const sal_Int32 before = tokens[at - 1].OpCode;
    const sal_Int32 behind = tokens[at + 1].OpCode;
    return (before == codes_.open || before == codes_.separator) &&
           (behind == codes_.close || behind == codes_.separator) &&
           (reducing_.count(function.OpCode) != 0 ||
            (lookingUp_.count(function.OpCode) != 0 && before == codes_.separator));
}

sal_Int32 TokenShape::MatchingClose(const Tokens& tokens, sal_Int32 open, int& separators) const {
    separators = 0;
    int depth = 0;
    for (sal_Int32 k = open; k < tokens.getLength(); ++k) {
        if (tokens[k].OpCode == codes_.open) ++depth;
        if (tokens[k].OpCode == codes_.separator && depth == 1) ++separators;
        if (tokens[k].OpCode == codes_.close && --depth == 0) return k;
    }
    return -1;
}

bool TokenShape::IsNeverArray(const Tokens& tokens) const {
    if (tokens.getLength() > 2 && reducing_.count(tokens[0].OpCode) != 0) {
        int separators = 0;
        if (MatchingClose(tokens, 1, separators) == tokens.getLength() - 1) return true;
    }
    std::vector<sal_Int32> opened;  // the places of the brackets round a token
    for (sal_Int32 k = 0; k < tokens.getLength(); ++k) {
        const Token& token = tokens[k];
        if (token.OpCode == codes_.open) opened.push_back(k);
        if (token.OpCode == codes_.close && !opened.empty()) opened.pop_back();
        css::sheet::SingleReference single;
        const auto type = token.Data.getValueTypeClass();
        const bool isConstant = !token.Data.hasValue() || type == css::uno::TypeClass_DOUBLE ||
                                type == css::uno::TypeClass_STRING ||
                                type == css::uno::TypeClass_LONG;
        if (token.OpCode == codes_.name || token.OpCode == codes_.range ||
            token.OpCode == codes_.join || spreading_.count(token.OpCode) != 0) {
            return false;
        }
        if (token.OpCode == codes_.push && !isConstant && !(token.Data >>= single) &&
            !IsReadAsWhole(tokens, k, opened)) {
            return false;
        }
        if (token.OpCode != codes_.push && !isConstant)
            return false;  // a database range and its like
    }
    return true;
}

std::vector<TokenShape::Call> TokenShape::ReferringCalls(const Tokens& tokens) const {
    return CallsOf(making_, tokens);
}

std::vector<TokenShape::Call> TokenShape::IndirectCalls(const Tokens& tokens) const {
    return CallsOf(indirect_, tokens);
}

std::vector<TokenShape::Call> TokenShape::CallsOf(const std::set<sal_Int32>& functions,
                                                  const Tokens& tokens) const {
    std::vector<Call> calls;
    for (sal_Int32 k = 0; k + 1 < tokens.getLength(); ++k) {
        if (functions.count(tokens[k].OpCode) == 0 || tokens[k + 1].OpCode != codes_.open) continue;
        Call call;
        call.first = k;
        call.close = -1;
        int depth = 0;
        for (sal_Int32 at = k + 1; at < tokens.getLength() && call.close < 0; ++at) {
            const sal_Int32 code = tokens[at].OpCode;
            if (code == codes_.open) ++depth;
            if (code == codes_.separator && depth == 1) call.separators.push_back(at);
            if (code == codes_.close && --depth == 0) call.close = at;
        }
        if (call.close > 0) calls.push_back(std::move(call));
    }
    return calls;
}

Tokens TokenShape::Settled(const Tokens& read, const CellAddress& cell) const {
    Tokens tokens(read);
    for (auto& token : tokens) {
        css::sheet::SingleReference single;
        css::sheet::ComplexReference complex;
        if (token.Data >>= single) {
            token.Data <<= Absolute(single, cell);
        } else if (token.Data >>= complex) {
            complex.Reference1 = Absolute(complex.Reference1, cell);
            complex.Reference2 = Absolute(complex.Reference2, cell);
            token.Data <<= complex;
        }
    }
    const auto cellFunction = codes_.byName.find(u"CELL");
    css::sheet::SingleReference reference;
    reference.Sheet = cell.Sheet;
    reference.Column = cell.Column;
    reference.Row = cell.Row;
    reference.Flags = css::sheet::ReferenceFlags::SHEET_3D;
    Token asked(codes_.push, css::uno::Any());
    asked.Data <<= reference;

    std::vector<Token> out;
    std::vector<sal_Int32> appendAt;  // the ")" of a CELL with one argument
    for (sal_Int32 k = 0; k < tokens.getLength(); ++k) {
        const bool isCall = k + 1 < tokens.getLength() && tokens[k + 1].OpCode == codes_.open;
        if (!appendAt.empty() && appendAt.back() == k) {
            appendAt.pop_back();
            out.emplace_back(codes_.separator, css::uno::Any());
            out.push_back(asked);
        }
        out.push_back(tokens[k]);
        if (!isCall) continue;
        int separators = 0;
        const sal_Int32 close = MatchingClose(tokens, k + 1, separators);
        if (close == k + 2 && aboutOwnCell_.count(tokens[k].OpCode) != 0) {
            out.push_back(tokens[++k]);
            out.push_back(asked);
        } else if (close > k + 2 && separators == 0 && cellFunction != codes_.byName.end() &&
                   tokens[k].OpCode == cellFunction->second) {
            appendAt.push_back(close);
        }
    }
    return Tokens(out.data(), static_cast<sal_Int32>(out.size()));
}

}  // namespace korvane::calc
