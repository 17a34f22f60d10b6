#include "bindings/calc/token_shape.h"

#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <iterator>
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
// Functions that make one value of whatever they are given.
constexpr const char16_t* kReducing[] = {
    u"SUM",       u"SUMPRODUCT", u"COUNT",    u"COUNTA",     u"MIN",      u"MAX",    u"AVERAGE",
    u"AND",       u"OR",         u"XOR",      u"ROWS",       u"COLUMNS",  u"AREAS",  u"NPV",
    u"IRR",       u"MEDIAN",     u"PRODUCT",  u"STDEV",      u"STDEVP",   u"VAR",    u"VARP",
    u"SUMSQ",     u"MINA",       u"MAXA",     u"AVERAGEA",   u"SUMXMY2",  u"CORREL", u"MDETERM",
    u"GCD",       u"LCM",        u"SUBTOTAL", u"COUNTBLANK", u"TEXTJOIN", u"CONCAT", u"SLOPE",
    u"INTERCEPT", u"RSQ",        u"SUMX2MY2", u"SUMX2PY2"};
// Functions that make arrays, or references to blocks, out of single values.
constexpr const char16_t* kSpreading[] = {
    u"INDEX", u"OFFSET", u"INDIRECT", u"MUNIT", u"CHOOSE", u"MULTIPLE.OPERATIONS", u"CURRENT"};
// Functions that give one of their arguments.
constexpr const char16_t* kChoosing[] = {u"IF", u"IFERROR", u"IFNA", u"CHOOSE"};
// Functions that look a value up in the ranges behind their first argument.
constexpr const char16_t* kLookingUp[] = {u"VLOOKUP", u"HLOOKUP", u"MATCH"};
constexpr const char16_t* kAboutOwnCell[] = {u"ROW", u"COLUMN", u"SHEET"};

bool Corner(const css::sheet::SingleReference& reference, const CellAddress& at, int& sheet,
            std::int32_t& row, std::int32_t& column) {
    namespace Flags = css::sheet::ReferenceFlags;
    const sal_Int32 flags = reference.Flags;
    if ((flags & (Flags::COLUMN_DELETED | Flags::ROW_DELETED | Flags::SHEET_DELETED)) != 0)
        return false;
    sheet =
        (flags & Flags::SHEET_RELATIVE) != 0 ? at.Sheet + reference.RelativeSheet : reference.Sheet;
    row = (flags & Flags::ROW_RELATIVE) != 0 ? at.Row + reference.RelativeRow : reference.Row;
    column = (flags & Flags::COLUMN_RELATIVE) != 0 ? at.Column + reference.RelativeColumn
                                                   : reference.Column;
    return row >= 0 && row < kSheetRows && column >= 0 && column < kSheetColumns && sheet >= 0;
}

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

bool TokenShape::IsFunction(const Token& token, const char16_t* const* names,
                            std::size_t count) const {
    for (std::size_t k = 0; k < count; ++k) {
        const auto known = codes_.byName.find(names[k]);
        if (known != codes_.byName.end() && known->second == token.OpCode) return true;
    }
    return false;
}

std::optional<Place> TokenShape::PlainReference(const Tokens& tokens, const CellAddress& at) const {
    if (tokens.getLength() != 1 || tokens[0].OpCode != codes_.push) return std::nullopt;
    css::sheet::SingleReference single;
    css::sheet::ComplexReference complex;
    const bool isCell = tokens[0].Data >>= single;
    if (isCell) {
        complex.Reference1 = complex.Reference2 = single;
    } else if (!(tokens[0].Data >>= complex)) {
        return std::nullopt;
    }
    Place place;
    int lastSheet = 0;
    Area& area = place.area;
    if (!Corner(complex.Reference1, at, place.sheet, area.top, area.left)) return std::nullopt;
    if (!Corner(complex.Reference2, at, lastSheet, area.bottom, area.right)) return std::nullopt;
    if (lastSheet != place.sheet) return std::nullopt;  // cells of several sheets
    if (area.top > area.bottom) std::swap(area.top, area.bottom);
    if (area.left > area.right) std::swap(area.left, area.right);
    for (auto* number : {&area.top, &area.left, &area.bottom, &area.right}) ++*number;
    return place;
}

bool TokenShape::IsNeverReference(const Tokens& tokens) const {
    return IsNeverReference(tokens, 0, tokens.getLength());
}

bool TokenShape::IsNeverReference(const Tokens& tokens, sal_Int32 first, sal_Int32 last) const {
    // IF gives one of its arguments: a reference only if one of them can be.
    int separators = 0;
    if (last - first > 3 && IsFunction(tokens[first], kChoosing, std::size(kChoosing)) &&
        MatchingClose(tokens, first + 1, separators) == last - 1) {
        sal_Int32 start = first + 2;
        bool isFirst = IsFunction(tokens[first], kChoosing, 1);  // its condition is not given
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
                if (!IsFunction(token, kReferring, std::size(kReferring))) return true;
            } else if (token.OpCode != codes_.range && token.OpCode != codes_.intersection &&
                       token.OpCode != codes_.join && token.OpCode != codes_.name &&
                       token.OpCode != codes_.bad) {
                // An arithmetic operator; other special tokens may be anything.
                for (const auto& [name, code] : codes_.byName) {
                    if (code == token.OpCode) return true;
                }
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
           (IsFunction(function, kReducing, std::size(kReducing)) ||
            (IsFunction(function, kLookingUp, std::size(kLookingUp)) &&
             before == codes_.separator));
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
    if (tokens.getLength() > 2 && IsFunction(tokens[0], kReducing, std::size(kReducing))) {
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
            token.OpCode == codes_.join || IsFunction(token, kSpreading, std::size(kSpreading))) {
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

Tokens TokenShape::Settled(const Tokens& read, const CellAddress& at,
                           const CellAddress& cell) const {
    Tokens tokens(read);
    for (auto& token : tokens) {
        css::sheet::SingleReference single;
        css::sheet::ComplexReference complex;
        if (token.Data >>= single) {
            token.Data <<= Absolute(single, at);
        } else if (token.Data >>= complex) {
            complex.Reference1 = Absolute(complex.Reference1, at);
            complex.Reference2 = Absolute(complex.Reference2, at);
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
        if (close == k + 2 && IsFunction(tokens[k], kAboutOwnCell, std::size(kAboutOwnCell))) {
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
