// What Excel would refuse is told from what it would take.
#include <gtest/gtest.h>

#include "base/text.h"
#include "bindings/calc/excel_text.h"

namespace korvane::calc {
namespace {

TEST(WellFormed, FormulasAre) {
    for (const char16_t* text : {u"1",
                                 u"A1",
                                 u"-A1%",
                                 u"--A1",
                                 u"SUM(1,2)",
                                 u"SUM()",
                                 u"IF(A1,,2)",
                                 u"IF(A1,\"\",)",
                                 u"A1:B2 C3:D4",
                                 u"(A1,B2)",
                                 u"'My Sheet'!A1",
                                 u"'[B.xls]My Sheet'!A1+1",
                                 u"[B.xls]S!A1",
                                 u"{1,2;\"x\",TRUE}",
                                 u"{-1,#N/A}",
                                 u"#N/A",
                                 u"S!#REF!",
                                 u"#REF!A1+#REF!",
                                 u"S!$A#REF!",
                                 u"[1]!Name",
                                 u"S!A1:S!B2",
                                 u"'My S'!A1:'[B.xls]My S'!C1 S!B2",
                                 u"[B.xls]S!A1:s!B2",
                                 u"S!A1:INDEX(T!B1:B2,1)",
                                 u"S:T!A1:B2",
                                 u"'S 1':'T 1'!A1",
                                 u"1.5E-10",
                                 u"A1<>B1",
                                 u"A1<=-1",
                                 u"Table1[[#This Row],[Col]]",
                                 u"\"a\"\"b\"",
                                 u" A1 + 2 ",
                                 u"A1#",
                                 u"@A1",
                                 u"A1:INDEX(B1:B2,1)",
                                 u"'S 1:S 4'!A1",
                                 u"SUM( A1 , B1 )",
                                 u"A1\n+B1",
                                 u"Bücher!A1"}) {
        EXPECT_TRUE(IsWellFormed(text)) << ToUtf8(text);
    }
}

TEST(WellFormed, BrokenTextsAreNot) {
    for (const char16_t* text :
         {u"",     u" ",  u"SUM(1,2", u"SUM(1,2))", u"1+", u"*1",   u"A1+*2",    u"\"abc", u"'S!A1",
          u"{1,2", u"{}", u"{1,,2}",  u"{SUM(1)}",  u"()", u"(1,)", u"SUM(1;2)", u"'S'",   u"S!",
          u"!A1!", u"1,", u"A1&",     u"[B.xls",    u"="}) {
        EXPECT_FALSE(IsWellFormed(text)) << ToUtf8(text);
    }
}

TEST(WellFormed, AReferenceNamesOneSheet) {
    for (const char16_t* text : {u"Data!A1:B2Data!B1:B3", u"S!A1:T!B2", u"S!T!A1", u"S!A1!B2",
                                 u"'My S'!'My T'!A1", u"A1'S'!B2", u"\"a\"A1", u"(A1)B1"}) {
        EXPECT_FALSE(IsWellFormed(text)) << ToUtf8(text);
    }
}

TEST(WellFormed, DeepNestingEndsWithoutOverflow) {
    EXPECT_FALSE(IsWellFormed(std::u16string(8000, u'(')));
    EXPECT_TRUE(IsWellFormed(std::u16string(300, u'(') + u"1" + std::u16string(300, u')')));
}

}  // namespace
}  // namespace korvane::calc
