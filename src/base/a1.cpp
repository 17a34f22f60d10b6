#include "base/a1.h"

#include <algorithm>

#include "base/text.h"

namespace korvane {
namespace {

bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }
bool IsLetter(char16_t ch) { return FoldChar(ch) >= u'a' && FoldChar(ch) <= u'z'; }

// One corner of a reference; a column or a row alone leaves the other at 0.
struct Corner {
    std::int32_t row = 0;
    std::int32_t column = 0;
};

std::optional<Corner> ParseCorner(std::u16string_view text) {
    Corner corner;
    std::size_t at = 0;
    if (at < text.size() && text[at] == u'$') ++at;
    const std::size_t letters = at;
    while (at < text.size() && IsLetter(text[at])) ++at;
    if (at > letters) {
        const auto column = ParseColumn(text.substr(letters, at - letters));
        if (!column) return std::nullopt;
        corner.column = *column;
        if (at < text.size() && text[at] == u'$') {
            ++at;
            if (at == text.size()) return std::nullopt;
        }
    }
    const std::size_t digits = at;
    while (at < text.size() && IsDigit(text[at])) {
        corner.row = corner.row * 10 + (text[at] - u'0');
        if (corner.row > kSheetRows) return std::nullopt;
        ++at;
    }
    if (at > digits && (corner.row == 0 || text[digits] == u'0')) return std::nullopt;
    if (at != text.size() || at == letters) return std::nullopt;
    return corner;
}

// Whether a sheet's name would read as something else without quotes.
bool ReadsAsReference(std::u16string_view name) {
    const auto corner = ParseCorner(name);
    if (corner && corner->row > 0) return true;
    if (EqualIgnoringCase(name, u"TRUE") || EqualIgnoringCase(name, u"FALSE")) return true;
    // R1C1 style: R, C, RC, R1, C1, R1C1.
    std::size_t at = 0;
    if (at < name.size() && FoldChar(name[at]) == u'r') {
        ++at;
        while (at < name.size() && IsDigit(name[at])) ++at;
    }
    if (at < name.size() && FoldChar(name[at]) == u'c') {
        ++at;
        while (at < name.size() && IsDigit(name[at])) ++at;
    }
    return at > 0 && at == name.size();
}

bool HasOnlyPlainChars(std::u16string_view name) {
    return std::all_of(name.begin(), name.end(), [](char16_t ch) {
        return IsLetter(ch) || IsDigit(ch) || ch == u'_' || ch == u'.' || ch >= 0x80;
    });
}

bool NeedsQuotes(std::u16string_view book, std::u16string_view sheet) {
    if (!HasOnlyPlainChars(book) || !HasOnlyPlainChars(sheet)) return true;
    return sheet.empty() || IsDigit(sheet.front()) || sheet.front() == u'.' ||
           ReadsAsReference(sheet);
}

// Takes "[book]" off the front of `place`; false when the bracket stays open.
bool TakeBook(std::u16string_view& place, std::u16string& book) {
    if (place.empty() || place.front() != u'[') return true;
    const auto end = place.find(u']');
    if (end == std::u16string_view::npos) return false;
    book = place.substr(1, end - 1);
    place.remove_prefix(end + 1);
    return true;
}

}  // namespace

std::optional<std::int32_t> ParseColumn(std::u16string_view letters) {
    if (letters.empty() || letters.size() > 3) return std::nullopt;
    std::int32_t column = 0;
    for (const char16_t ch : letters) {
        if (!IsLetter(ch)) return std::nullopt;
        column = column * 26 + (FoldChar(ch) - u'a' + 1);
    }
    if (column > kSheetColumns) return std::nullopt;
    return column;
}

std::u16string ColumnLetters(std::int32_t column) {
    std::u16string letters;
    for (; column > 0; column = (column - 1) / 26) {
        letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (column - 1) % 26));
    }
    return letters;
}

std::optional<Area> ParseArea(std::u16string_view text) {
    const auto colon = text.find(u':');
    const auto first = ParseCorner(text.substr(0, colon));
    if (!first) return std::nullopt;
    auto second = first;
    if (colon != std::u16string_view::npos) {
        second = ParseCorner(text.substr(colon + 1));
        if (!second) return std::nullopt;
    } else if (first->row == 0 || first->column == 0) {
        return std::nullopt;  // a lone column or row is written A:A
    }
    if ((first->row == 0) != (second->row == 0) || (first->column == 0) != (second->column == 0)) {
        return std::nullopt;
    }
    Area area;
    area.top = first->row == 0 ? 1 : std::min(first->row, second->row);
    area.bottom = first->row == 0 ? kSheetRows : std::max(first->row, second->row);
    area.left = first->column == 0 ? 1 : std::min(first->column, second->column);
    area.right = first->column == 0 ? kSheetColumns : std::max(first->column, second->column);
    return area;
}

std::u16string AreaText(const Area& area, bool rowAbsolute, bool columnAbsolute) {
    std::u16string text;
    const auto column = [&](std::int32_t number) {
        if (columnAbsolute) text += u'$';
        text += ColumnLetters(number);
    };
    const auto row = [&](std::int32_t number) {
        if (rowAbsolute) text += u'$';
        for (const char digit : std::to_string(number)) text += static_cast<char16_t>(digit);
    };
    // All cells of a sheet are written as rows.
    const bool columns = !area.IsWholeRows();
    const bool rows = area.IsWholeRows() || !area.IsWholeColumns();
    if (columns) column(area.left);
    if (rows) row(area.top);
    if (area.IsCell()) return text;
    text += u':';
    if (columns) column(area.right);
    if (rows) row(area.bottom);
    return text;
}

std::optional<ReferenceParts> SplitReference(std::u16string_view text) {
    ReferenceParts parts;
    if (!text.empty() && text.front() == u'\'') {
        std::u16string place;
        std::size_t at = 1;
        for (;; ++at) {
            if (at >= text.size()) return std::nullopt;
            if (text[at] == u'\'') {
                if (at + 1 >= text.size() || text[at + 1] != u'\'') break;
                ++at;  // a doubled apostrophe stands for one
            }
            place += text[at];
        }
        if (at + 1 >= text.size() || text[at + 1] != u'!') return std::nullopt;
        std::u16string_view rest = place;
        if (!TakeBook(rest, parts.book)) return std::nullopt;
        parts.sheet = rest;
        parts.rest = text.substr(at + 2);
        return parts;
    }
    const auto mark = text.rfind(u'!');
    if (mark == std::u16string_view::npos) {
        parts.rest = text;
        return parts;
    }
    std::u16string_view place = text.substr(0, mark);
    if (!TakeBook(place, parts.book)) return std::nullopt;
    parts.sheet = place;
    parts.rest = text.substr(mark + 1);
    return parts;
}

std::u16string SheetPrefix(std::u16string_view book, std::u16string_view sheet) {
    std::u16string place;
    if (!book.empty()) place.append(u"[").append(book).append(u"]");
    place += sheet;
    if (!NeedsQuotes(book, sheet)) return place + u"!";
    place = ReplaceAll(std::move(place), u"'", u"''");
    place.insert(place.begin(), u'\'');
    return place += u"'!";
}

}  // namespace korvane
