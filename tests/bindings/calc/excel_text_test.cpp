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
    EXPECT_EQ(Show(u"['file:///p/b.xlsx']Sheet!A1"), "[b.xlsx]Sheet!A1");
    EXPECT_EQ(Show(u"['file:///p/a%20b.xlsx']'My Sheet'!A1"), "'[a b.xlsx]My Sheet'!A1");
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

TEST(ExcelText, FindsReferencesToTables) {
    EXPECT_EQ(TableReferencesIn(u"=SUM(T1[[#This Row];[A b]:[C]];T_2[])+T3[D]"),
              (std::vector<std::u16string>{u"T1[[#This Row],[A b]:[C]]", u"T_2[]", u"T3[D]"}));
}

TEST(ExcelText, TellsOtherBooks) {
    EXPECT_TRUE(TextForParser(u"[b.xlsx]S!A1", u"Own.xls").otherBook);
    EXPECT_TRUE(TextForParser(u"SUM('[b.xlsx]My S'!A1)", u"Own.xls").otherBook);
    EXPECT_TRUE(TextForParser(u"'C:\\dir\\[b.xlsx]S'!A1", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"\"[b.xlsx]S!A1\"", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"[Own.xls]S!A1", u"Own.xls").otherBook);
    EXPECT_FALSE(TextForParser(u"Table1[Col]", u"Own.xls").otherBook);
}

TEST(ExcelText, FindsErrorNamesOutsideQuotations) {
    EXPECT_EQ(ErrorsIn(u"#N/A+\"#REF!\"+#div/0!"),
              (std::vector<std::u16string>{u"#N/A", u"#DIV/0!"}));
}

}  // namespace
}  // namespace korvane::calc
