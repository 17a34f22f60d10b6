#include "formula/substr.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"

namespace korvane {
namespace {

// The parts as "position:text|position:text", every separator a comma.
std::string PartsOf(std::u16string_view text, bool keepEmpty = true) {
    std::vector<CSubstr> parts;
    SplitArguments(text, u",", parts, keepEmpty);
    std::string out;
    for (const auto& part : parts) {
        if (!out.empty()) out += '|';
        out += std::to_string(part.lPosition) + ":" + ToUtf8(part.sString);
    }
    return out;
}

TEST(SplitArguments, CutsAtCommasAndKeepsBlanks) {
    EXPECT_EQ(PartsOf(u"A1>0,B1,C1"), "1:A1>0|6:B1|9:C1");
    EXPECT_EQ(PartsOf(u"A1, B1 ,C1"), "1:A1|4: B1 |9:C1");
    EXPECT_EQ(PartsOf(u"A1"), "1:A1");
    EXPECT_EQ(PartsOf(u""), "");
}

TEST(SplitArguments, NeverCutsInsideQuotesOrBrackets) {
    EXPECT_EQ(PartsOf(u"\"a,b\",C1"), "1:\"a,b\"|7:C1");
    EXPECT_EQ(PartsOf(u"'x,y'!A1,C1"), "1:'x,y'!A1|10:C1");
    EXPECT_EQ(PartsOf(u"SUM(A1,B1),C1"), "1:SUM(A1,B1)|12:C1");
    EXPECT_EQ(PartsOf(u"\"a\"\",b\",C1"), "1:\"a\"\",b\"|9:C1");
    EXPECT_EQ(PartsOf(u"((1,2),3),4"), "1:((1,2),3)|11:4");
}

TEST(SplitArguments, BracesDoNotHoldTogether) { EXPECT_EQ(PartsOf(u"{1,2},A1"), "1:{1|4:2}|7:A1"); }

TEST(SplitArguments, AnEmptyArgumentKeepsItsPlaceButNotAtTheEnd) {
    EXPECT_EQ(PartsOf(u"A1>0,,B1"), "1:A1>0|6:|7:B1");
    EXPECT_EQ(PartsOf(u",B1"), "1:|2:B1");
    EXPECT_EQ(PartsOf(u"A1,"), "1:A1");
    EXPECT_EQ(PartsOf(u","), "1:");
    EXPECT_EQ(PartsOf(u",,"), "1:|2:");
}

TEST(SplitArguments, EmptyArgumentsVanishWhenTheyAreNotKept) {
    EXPECT_EQ(PartsOf(u"A1,,B1,", false), "1:A1|5:B1");
    EXPECT_EQ(PartsOf(u",,,", false), "");
}

TEST(SplitArguments, AnOpenBracketTakesTheRest) {
    EXPECT_EQ(PartsOf(u"A1,SUM(B1,C1"), "1:A1|4:SUM(B1,C1");
}

TEST(SplitArguments, AppendsBehindWhatIsThere) {
    std::vector<CSubstr> parts{{u"first", 9}};
    SplitArguments(u"a;b,c", u",;", parts, true);
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_EQ(parts[0].sString, u"first");
    EXPECT_EQ(parts[1].sString, u"a");
    EXPECT_EQ(parts[3].sString, u"c");
    EXPECT_EQ(parts[3].lPosition, 5);
}

TEST(SplitArguments, AnOpenQuoteIsAFailure) {
    for (const auto* text : {u"A1,\"b", u"'b,c", u"SUM(\"b),c"}) {
        std::vector<CSubstr> parts;
        EXPECT_THROW(SplitArguments(text, u",", parts, true), Error) << ToUtf8(text);
    }
}

}  // namespace
}  // namespace korvane
