#include "formula/scan.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"

namespace korvane {
namespace {

// Runs `call` and gives the number of the Error that it raises, 0 for none.
template <typename Call>
int ErrorNumberOf(Call call) {
    try {
        call();
        return 0;
    } catch (const Error& error) {
        return error.number();
    }
}

TEST(Scan, KnowsTheElevenOperators) {
    const std::u16string operators = u"+-*^/<>=&,%";
    for (char16_t ch = 1; ch < 0x180; ++ch) {
        EXPECT_EQ(bIsOperator(ch), operators.find(ch) != std::u16string::npos)
            << static_cast<int>(ch);
    }
}

TEST(Scan, FillersAreBracketsBracesBlankAndLineFeed) {
    const std::u16string fillers = u"(){} \n";
    for (char16_t ch = 1; ch < 0x180; ++ch) {
        EXPECT_EQ(bIsFiller(ch), fillers.find(ch) != std::u16string::npos) << static_cast<int>(ch);
    }
    EXPECT_FALSE(bIsFiller(u'\r'));
    EXPECT_FALSE(bIsFiller(u'\t'));
    EXPECT_FALSE(bIsFiller(u';'));
}

TEST(Scan, BothQuotesAreQuotesAndNothingElseIs) {
    EXPECT_TRUE(bIsQuote(u'"'));
    EXPECT_TRUE(bIsQuote(u'\''));
    EXPECT_FALSE(bIsQuote(u'`'));
    EXPECT_FALSE(bIsQuote(u'\u2019'));
}

TEST(Scan, TextLiteralsAndNumbersAreConstants) {
    for (const auto* constant : {u"\"\"", u"\"A1\"", u"\"", u"0", u"12", u"1.5", u".5", u"5.",
                                 u"1E5", u"1e-5", u"+3", u"-2", u" 7 "}) {
        EXPECT_TRUE(bIsConstant(constant)) << ToUtf8(constant);
    }
    for (const auto* other : {u"", u"A1", u"TRUE", u"'S'!A1", u"2;3", u"#N/A", u"1:1", u"$1", u"1E",
                              u".", u"1,5", u" \"a\"", u"(5)", u"1 2"}) {
        EXPECT_FALSE(bIsConstant(other)) << ToUtf8(other);
    }
}

TEST(Scan, FindsTheQuoteThatCloses) {
    struct Case {
        const char16_t* text;
        std::int32_t from;
        std::int32_t closing;
    };
    for (const Case& c : {
             Case{u"\"abc\"", 1, 5},
             Case{u"=\"\"", 2, 3},
             Case{u"=\"\"+1", 2, 3},
             Case{u"\"a\"\"b\"", 1, 6},  // a doubled quote stands for one
             Case{u"\"\"\"\"", 1, 4},    // a literal of one quote
             Case{u"\"a'b\"", 1, 5},     // the other quote is a character
             Case{u"'My \"Sheet'!A1", 1, 11},
             Case{u"'It''s'!A1", 1, 7},
             Case{u"\"a\"&\"b\"", 5, 7},
             Case{u"\"a\"\"", 1, 3},  // the second one ends the text: not passed over
             Case{u"\"abc", 1, 0},
             Case{u"\"", 1, 0},
             Case{u"'abc\"", 1, 0},
         }) {
        EXPECT_EQ(lClosingQuote(c.from, c.text), c.closing) << ToUtf8(c.text);
    }
}

TEST(Scan, AQuoteThatStaysOpenIsAFailureForWhoGoesOnBehindIt) {
    EXPECT_EQ(lPastQuote(1, u"\"abc\""), 5);
    EXPECT_EQ(ErrorNumberOf([] { lPastQuote(1, u"\"abc"); }), kErrorInvalidCall);
    EXPECT_EQ(ErrorNumberOf([] { lClosingBracket(1, u"(\"abc)"); }), kErrorInvalidCall);
    EXPECT_EQ(ErrorNumberOf([] { lClosingBracket(1, u"('abc)"); }), kErrorInvalidCall);
    EXPECT_EQ(ErrorNumberOf([] { bNeedsParse(u"'abc"); }), kErrorInvalidCall);
    EXPECT_EQ(ErrorNumberOf([] { bIsCallOf(u"=OFFSET(\"", u"OFFSET"); }), kErrorInvalidCall);
}

TEST(Scan, FindsTheBracketThatCloses) {
    struct Case {
        const char16_t* text;
        std::int32_t from;
        std::int32_t closing;
    };
    for (const Case& c : {
             Case{u"()", 1, 2},
             Case{u"SUM(A1,(B1))+1", 4, 12},
             Case{u"SUM(A1,(B1))+1", 8, 11},
             Case{u"T(\")\")+1", 2, 6},  // a bracket in a literal does not count
             Case{u"T(')('!A1)+1", 2, 10},
             Case{u"SUM(A1", 4, 6},  // left open: to the end
             Case{u"SUM(", 4, 4},
             Case{u"((A1)", 1, 5},
         }) {
        EXPECT_EQ(lClosingBracket(c.from, c.text), c.closing) << ToUtf8(c.text);
    }
}

TEST(Scan, CutsBehindTheLastMark) {
    EXPECT_EQ(sAfterLastColon(u"A1:INDEX"), u"INDEX");
    EXPECT_EQ(sAfterLastColon(u"A1:B1:C1"), u"C1");
    EXPECT_EQ(sAfterLastColon(u"SUM"), u"SUM");
    EXPECT_EQ(sAfterLastColon(u"A1:"), u"");
    EXPECT_EQ(sStripSheet(u"S!Rate"), u"Rate");
    EXPECT_EQ(sStripSheet(u"'a!b'!Rate"), u"Rate");
    EXPECT_EQ(sStripSheet(u"Rate"), u"Rate");
    EXPECT_EQ(sStripSheet(u"S!"), u"");
}

TEST(Scan, RemovesEveryGivenCharacter) {
    EXPECT_EQ(sRemoveChars(u"=S!$B$2*$C$3", u"$"), u"=S!B2*C3");
    EXPECT_EQ(sRemoveChars(u"a-b+c", u"-+"), u"abc");
    EXPECT_EQ(sRemoveChars(u"$$", u"$"), u"");
    EXPECT_EQ(sRemoveChars(u"abc", u""), u"abc");
}

TEST(Scan, OnlyTextsWithAnOperatorOrABracketHaveParts) {
    for (const auto* text : {u"A1+1", u"SUM(A1)", u"=A1+1", u"-A1", u"A1%", u"A1,B1", u"==A1",
                             u"(A1)", u"'a'!A1*2", u"#REF!/A1"}) {
        EXPECT_TRUE(bNeedsParse(text)) << ToUtf8(text);
    }
    for (const auto* text : {u"", u"=", u"A1", u"=A1", u"S!A1:B2", u"'My-Sheet'!A1", u"=\"a+b\"",
                             u"A1 B1", u"A1)", u"{1;2}", u"#DIV/0!", u"#N/A", u"#ERROR!"}) {
        EXPECT_FALSE(bNeedsParse(text)) << ToUtf8(text);
    }
}

TEST(Scan, AWholeTextIsOneCallOnlyWhenNothingStandsBehindIt) {
    EXPECT_TRUE(bIsCallOf(u"=INDIRECT(A1)", u"INDIRECT"));
    EXPECT_TRUE(bIsCallOf(u"=OFFSET(A1,(1),2)", u"OFFSET"));
    EXPECT_TRUE(bIsCallOf(u"=INDIRECT(", u"INDIRECT"));  // left open: to the end
    EXPECT_FALSE(bIsCallOf(u"=INDIRECT(A1)+1", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"=INDIRECT(A1) ", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"=indirect(A1)", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"INDIRECT(A1)", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"=INDIRECT", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"=INDIRECTS(A1)", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"= INDIRECT(A1)", u"INDIRECT"));
    EXPECT_FALSE(bIsCallOf(u"=", u"OFFSET"));
    EXPECT_FALSE(bIsCallOf(u"", u"OFFSET"));
}

TEST(Scan, TailsOfTheReferenceFunctionsAreOpenedToo) {
    for (const auto* name : {u"OFFSET", u"INDEX", u"INDIRECT", u"index", u"Offset", u"T", u"SET",
                             u"ET", u"X", u"DIRECT", u"A1:INDEX", u"A1:B1:t", u"A1:"}) {
        EXPECT_TRUE(bIsReferenceFunction(name)) << ToUtf8(name);
    }
    for (const auto* name : {u"SUM", u"OFF", u"INDEXX", u"OFFSETS", u"IF", u"CHOOSE", u"INDEX:SUM",
                             u"N", u"S!INDEX", u"I"}) {
        EXPECT_FALSE(bIsReferenceFunction(name)) << ToUtf8(name);
    }
}

}  // namespace
}  // namespace korvane
