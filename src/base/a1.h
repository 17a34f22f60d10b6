// References in the A1 style: reading them, and writing them as Excel does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvane {

// The size of a sheet, as Excel documents it ("specifications and limits").
inline constexpr std::int32_t kSheetRows = 1'048'576;
inline constexpr std::int32_t kSheetColumns = 16'384;

// A block of cells, 1-based, both corners included, top-left corner first.
struct Area {
    std::int32_t top = 1;
    std::int32_t left = 1;
    std::int32_t bottom = 1;
    std::int32_t right = 1;

    bool IsCell() const { return top == bottom && left == right; }
    bool IsWholeColumns() const { return top == 1 && bottom == kSheetRows; }
    bool IsWholeRows() const { return left == 1 && right == kSheetColumns; }
    std::int64_t Count() const {
        return (std::int64_t{bottom} - top + 1) * (std::int64_t{right} - left + 1);
    }
    Area FirstCell() const { return {top, left, top, left}; }
    bool operator==(const Area&) const = default;
};

// "A1", "$B$2:C3", "A:C", "1:1", in any case, with any "$"; nothing for every
// other text and for cells outside the sheet.
std::optional<Area> ParseArea(std::u16string_view text);

// The letters of a column (1 is "A"), and the number of column letters.
std::u16string ColumnLetters(std::int32_t column);
std::optional<std::int32_t> ParseColumn(std::u16string_view letters);

// "B2:C3" or "$B$2:$C$3"; whole columns as "A:A", whole rows as "1:1".
std::u16string AreaText(const Area& area, bool rowAbsolute, bool columnAbsolute);

// A reference cut into its places; texts without their quotes and brackets,
// empty where the reference does not say.
struct ReferenceParts {
    std::u16string book;
    std::u16string sheet;
    std::u16string rest;  // behind the "!": an area or a name
};

// Cuts "A1", "S!A1", "'My Sheet'!A1", "[B.xls]S!A1", "'[B.xls]My Sheet'!A1".
// Nothing for a text whose quotes or brackets do not fit.
std::optional<ReferenceParts> SplitReference(std::u16string_view text);

// A sheet's prefix, "!" included, with quotes where Excel writes them: round
// names with other characters than letters, digits, "_" and ".", with a digit
// in front, or that read as a reference or a Boolean themselves. `book` may be empty.
std::u16string SheetPrefix(std::u16string_view book, std::u16string_view sheet);

}  // namespace korvane
