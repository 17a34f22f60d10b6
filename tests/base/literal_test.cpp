#include "base/literal.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane {
namespace {

TEST(Literal, NumbersTextsAndBooleansHaveAValue) {
    EXPECT_EQ(*LiteralValue(u"1.5")->Number(), 1.5);
    EXPECT_EQ(*LiteralValue(u"-2E3")->Number(), -2000);
    EXPECT_EQ(*LiteralValue(u"\"\"")->Text(), u"");
    EXPECT_EQ(*LiteralValue(u"\"a,b\"")->Text(), u"a,b");
    EXPECT_EQ(*LiteralValue(u"\"a\"\"b\"")->Text(), u"a\"b");
    EXPECT_EQ(*LiteralValue(u"\"\"\"\"")->Text(), u"\"");
    EXPECT_EQ(*LiteralValue(u"\"5\"")->Text(), u"5") << "in quotes it is no number";
    EXPECT_TRUE(*LiteralValue(u"TRUE")->Boolean());
    EXPECT_FALSE(*LiteralValue(u"false")->Boolean());
}

TEST(Literal, EveryOtherTextHasNone) {
    for (const auto* text : {u"", u"A1", u"\"", u"\"a", u"a\"", u"\"a\"b\"", u"\"\"\"",
                             u"\"a\"&\"b\"", u"TRUE()", u"'a'", u"#N/A", u"1+1", u"{1}"}) {
        EXPECT_FALSE(LiteralValue(text)) << ToUtf8(text);
    }
}

}  // namespace
}  // namespace korvane
