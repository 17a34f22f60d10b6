#include "base/a1.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane {
namespace {

TEST(A1, ColumnsHaveLetters) {
    for (const auto& [column, letters] : {std::pair{1, u"A"},
                                          {26, u"Z"},
                                          {27, u"AA"},
                                          {52, u"AZ"},
                                          {702, u"ZZ"},
                                          {703, u"AAA"},
                                          {16384, u"XFD"}}) {
        EXPECT_EQ(ColumnLetters(column), letters);
        EXPECT_EQ(ParseColumn(letters), column);
        EXPECT_EQ(ParseColumn(Fold(letters)), column);
    }
    for (std::int32_t column = 1; column <= kSheetColumns; ++column) {
        ASSERT_EQ(ParseColumn(ColumnLetters(column)), column);
    }
    for (const auto* letters : {u"", u"XFE", u"ZZZ", u"AAAA", u"A1", u"$A", u"\u00c4"}) {
        EXPECT_EQ(ParseColumn(letters), std::nullopt) << ToUtf8(letters);
    }
}

TEST(A1, ReadsReferencesWithAnyDollarsInAnyOrder) {
    struct Case {
        const char16_t* text;
        Area area;
    };
    for (const Case& c : {
             Case{u"A1", {1, 1, 1, 1}},
             Case{u"$b$2", {2, 2, 2, 2}},
             Case{u"B2:C3", {2, 2, 3, 3}},
             Case{u"C3:B2", {2, 2, 3, 3}},
             Case{u"$C2:B$3", {2, 2, 3, 3}},
             Case{u"XFD1048576", {1048576, 16384, 1048576, 16384}},
             Case{u"A:C", {1, 1, kSheetRows, 3}},
             Case{u"$C:A", {1, 1, kSheetRows, 3}},
             Case{u"3:1", {1, 1, 3, kSheetColumns}},
             Case{u"$1:1", {1, 1, 1, kSheetColumns}},
         }) {
        const auto area = ParseArea(c.text);
        ASSERT_TRUE(area) << ToUtf8(c.text);
        EXPECT_TRUE(*area == c.area) << ToUtf8(c.text);
    }
}

TEST(A1, EveryOtherTextIsNoReference) {
    for (const auto* text :
         {u"",         u"A",        u"1",      u"$",    u"A0",   u"A01",
          u"A1048577", u"XFE1",     u"AAAA1",  u"A1:",  u":A1",  u"A1:B",
          u"A:1",      u"A1:B2:C3", u"A$",     u"$$A1", u"A$$1", u"A1 ",
          u" A1",      u"A1B",      u"1A",     u"A-1",  u"R1C1", u"A99999999999999",
          u"0:0",      u"A1:$",     u"\u00c41"}) {
        EXPECT_FALSE(ParseArea(text)) << ToUtf8(text);
    }
}

TEST(A1, WritesReferencesAsExcelDoes) {
    const auto write = [](const char16_t* text, bool row, bool column) {
        return ToUtf8(AreaText(*ParseArea(text), row, column));
    };
    EXPECT_EQ(write(u"B2", false, false), "B2");
    EXPECT_EQ(write(u"B2", true, true), "$B$2");
    EXPECT_EQ(write(u"B2", true, false), "B$2");
    EXPECT_EQ(write(u"B2:C3", false, true), "$B2:$C3");
    EXPECT_EQ(write(u"B2:B2", true, true), "$B$2");
    EXPECT_EQ(write(u"A:C", true, true), "$A:$C");
    EXPECT_EQ(write(u"A:A", false, false), "A:A");
    EXPECT_EQ(write(u"1:3", true, true), "$1:$3");
    EXPECT_EQ(write(u"A1:C1048576", false, false), "A:C");
    EXPECT_EQ(write(u"A:XFD", false, false), "1:1048576") << "all cells are written as rows";
}

TEST(A1, AnAreaKnowsItsForm) {
    EXPECT_TRUE(ParseArea(u"B2")->IsCell());
    EXPECT_FALSE(ParseArea(u"B2:B3")->IsCell());
    EXPECT_TRUE(ParseArea(u"B:B")->IsWholeColumns());
    EXPECT_TRUE(ParseArea(u"2:2")->IsWholeRows());
    EXPECT_EQ(ParseArea(u"A:XFD")->Count(), std::int64_t{1048576} * 16384);
    EXPECT_EQ(ParseArea(u"B2:D5")->Count(), 12);
    EXPECT_TRUE(ParseArea(u"B2:D5")->FirstCell() == (Area{2, 2, 2, 2}));
}

// "book|sheet|rest", or "none".
std::string PartsOf(std::u16string_view text) {
    const auto parts = SplitReference(text);
    if (!parts) return "none";
    return ToUtf8(parts->book) + "|" + ToUtf8(parts->sheet) + "|" + ToUtf8(parts->rest);
}

TEST(A1, CutsAReferenceIntoItsPlaces) {
    EXPECT_EQ(PartsOf(u"A1"), "||A1");
    EXPECT_EQ(PartsOf(u"S!A1"), "|S|A1");
    EXPECT_EQ(PartsOf(u"'My Sheet'!A1:B2"), "|My Sheet|A1:B2");
    EXPECT_EQ(PartsOf(u"[B.xls]S!Rate"), "B.xls|S|Rate");
    EXPECT_EQ(PartsOf(u"'[B.xls]It''s'!A1"), "B.xls|It's|A1");
    EXPECT_EQ(PartsOf(u"'a!b'!A1"), "|a!b|A1");
    EXPECT_EQ(PartsOf(u""), "||");
    EXPECT_EQ(PartsOf(u"!A1"), "||A1");
    EXPECT_EQ(PartsOf(u"S!"), "|S|");
    EXPECT_EQ(PartsOf(u"''!A1"), "||A1");
    for (const auto* text : {u"'S!A1", u"'S'A1", u"'S'", u"'", u"[B.xls!A1", u"'[B.xls'!A1"}) {
        EXPECT_EQ(PartsOf(text), "none") << ToUtf8(text);
    }
}

TEST(A1, QuotesSheetsThatWouldReadAsSomethingElse) {
    struct Case {
        const char16_t* book;
        const char16_t* sheet;
        const char* prefix;
    };
    for (const Case& c : {Case{u"", u"Sheet1", "Sheet1!"},
                          Case{u"B.xls", u"S", "[B.xls]S!"},
                          Case{u"B.xls", u"My Sheet", "'[B.xls]My Sheet'!"},
                          Case{u"My Book.xls", u"S", "'[My Book.xls]S'!"},
                          Case{u"", u"It's", "'It''s'!"},
                          Case{u"", u"2024", "'2024'!"},
                          Case{u"", u"TRUE", "'TRUE'!"},
                          Case{u"", u"False", "'False'!"},
                          Case{u"", u"A1", "'A1'!"},
                          Case{u"", u"xfd9", "'xfd9'!"},
                          Case{u"", u"R1C1", "'R1C1'!"},
                          Case{u"", u"rc", "'rc'!"},
                          Case{u"", u"C", "'C'!"},
                          Case{u"", u"a-b", "'a-b'!"},
                          Case{u"", u"a.b", "a.b!"},
                          Case{u"", u"_x", "_x!"},
                          Case{u"", u"\u00dcbersicht", "\u00dcbersicht!"},
                          Case{u"", u"XFE1", "XFE1!"},
                          Case{u"", u"", "''!"},
                          Case{u"", u"a!b", "'a!b'!"}}) {
        const auto prefix = SheetPrefix(c.book, c.sheet);
        EXPECT_EQ(ToUtf8(prefix), c.prefix);
        // What is written reads back as the same place.
        const auto parts = SplitReference(prefix + u"A1");
        ASSERT_TRUE(parts);
        EXPECT_EQ(parts->book, c.book);
        EXPECT_EQ(parts->sheet, c.sheet);
    }
}

}  // namespace
}  // namespace korvane
