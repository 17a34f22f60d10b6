// Formula texts between Excel's spelling and that of Calc's parser.
#include "bindings/calc/excel_text.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::calc {
namespace {

std::string Show(const char16_t* printed) { return ToUtf8(ShownText(printed)); }

std::string Read(const char16_t* shown) { return ToUtf8(TextForParser(shown, u"Own.xls").text); }

TEST(ExcelText, ShowsWhatExcelShows) {
    EXPECT_EQ(Show(u"IF(A1,TRUE(),FALSE())"), "IF(A1,TRUE,FALSE)");
    EXPECT_EQ(Show(u"\"TRUE()\"&A1"), "\"TRUE()\"&A1");
    EXPECT_EQ(Show(u"_xlfn.CONCAT(A1)"), "CONCAT(A1)");
    EXPECT_EQ(Show(u"_xlfn._xlws.SORT(A1)"), "SORT(A1)");
    EXPECT_EQ(Show(u"xlookup(1,A1)"), "XLOOKUP(1,A1)");
    EXPECT_EQ(Show(u"MyFunction(1)"), "MyFunction(1)");
    EXPECT_EQ(Show(u"some_name+1"), "some_name+1");
}

TEST(ExcelText, QuotesSheetsAsAddressesDo) {
    EXPECT_EQ(Show(u"A1!B2+R1C1!B2+RC!B2+1E5!B2+TRUE!B2"),
              "'A1'!B2+'R1C1'!B2+'RC'!B2+'1E5'!B2+'TRUE'!B2");
    EXPECT_EQ(Show(u"'A.B'!B2+'My Sheet'!B2+'It''s'!B2+Data!A1:B2"),
              "A.B!B2+'My Sheet'!B2+'It''s'!B2+Data!A1:B2");
    EXPECT_EQ(Show(u"'[b.xlsx]My Sheet'!A1+[b.xlsx]S!A1"), "'[b.xlsx]My Sheet'!A1+[b.xlsx]S!A1");
    EXPECT_EQ(Read(u"1E5!B2+'Data'!B2+A1!B2"), "'1E5'!B2+Data!B2+'A1'!B2");
    EXPECT_EQ(Read(u"'S 1:S 4'!A1"), "'S 1:S 4'!A1");
}

TEST(ExcelText, WritesExponentsAsExcelDoes) {
    EXPECT_EQ(Show(u"1E+020*1.5E-007+1E+100"), "1E+20*1.5E-07+1E+100");
    EXPECT_EQ(Show(u"E+020+A1E+020+\"1E+020\""), "E+020+A1E+020+\"1E+020\"");
}

TEST(ExcelText, ReadsWhatExcelWrites) {
    EXPECT_EQ(Read(u"IF(A1,TRUE,false)"), "IF(A1,TRUE(),false())");
    EXPECT_EQ(Read(u"{TRUE,1}"), "{TRUE,1}");
    EXPECT_EQ(Read(u"TRUE()"), "TRUE()");
    EXPECT_EQ(Read(u"\"TRUE\""), "\"TRUE\"");
    EXPECT_EQ(Read(u"[Own.xls]S!A1+'[own.xls]My S'!B2"), "S!A1+'My S'!B2");
    EXPECT_EQ(Read(u"#N/A+1"), "NA()+1");
    EXPECT_EQ(Read(u"S!#REF!"), "INDIRECT(\"\")");
    EXPECT_EQ(Read(u"Table1[Col]"), "Table1[Col]");
}

TEST(ExcelText, KeepsExcelsOwnRounding) {
    EXPECT_EQ(Show(u"CEILING.XCL(A1,2)+FLOOR.XCL(A1,2)"), "CEILING(A1,2)+FLOOR(A1,2)");
    EXPECT_EQ(Read(u"CEILING(A1,2)"), "CEILING.XCL(A1,2)");
    EXPECT_EQ(ToUtf8(TextForParser(u"CEILING(A1,2)", u"Own.ods").text), "CEILING(A1,2)");
}

TEST(ExcelText, TellsOtherBooks) {
    EXPECT_TRUE(TextForParser(u"[b.xlsx]S!A1", u"Own.xls").otherBook);
    EXPECT_TRUE(TextForParser(u"SUM('[b.xlsx]My S'!A1)", u"Own.xls").otherBook);
    EXPECT_TRUE(TextForParser(u"'C:\\dir\\[b.xlsx]S'!A1", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"\"[b.xlsx]S!A1\"", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"[Own.xls]S!A1", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"Table1[Col]", u"Own.xls").otherBook);
}

}  // namespace
}  // namespace korvane::calc
