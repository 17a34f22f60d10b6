#include "bindings/posix/ini_escape.h"

#include <gtest/gtest.h>

#include "bindings/posix/random_text.h"

namespace korvane::posix {
namespace {

TEST(Escape, ReadsWellWhereNothingNeedsIt) {
    EXPECT_EQ(EscapeText(u"=IF(a;[b];\"#\") 100%"), "=IF(a;[b];\"#\") 100%");
    EXPECT_EQ(EscapeText(u"\u00e9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(EscapeName(u"Window Left.2"), "Window Left.2");
}

TEST(Escape, KeepsALineTogether) {
    EXPECT_EQ(EscapeText(u" a b "), "\\sa b\\s");
    EXPECT_EQ(EscapeText(u" "), "\\s");
    EXPECT_EQ(EscapeText(u"a\r\n\tb\\"), "a\\r\\n\\tb\\\\");
    EXPECT_EQ(EscapeText(std::u16string(u"\0\u0085\u2028\uFEFF", 4)),
              "\\u0000\\u0085\\u2028\\uFEFF");
    EXPECT_EQ(EscapeText(std::u16string(1, char16_t{0xD83D})), "\\uD83D");
    EXPECT_EQ(EscapeName(u"[a]=;#"), "\\[a\\]\\=\\;\\#");
}

TEST(Unescape, LeavesWhatIsNoEscape) {
    EXPECT_EQ(Unescape("C:\\Program\\"), u"C:\\Program\\");
    EXPECT_EQ(Unescape("\\u12G4\\u12"), u"\\u12G4\\u12");
    EXPECT_EQ(Unescape("\\u00e9\\u00E9"), u"\u00e9\u00e9");
    EXPECT_EQ(Unescape("a\xFF"), u"a\uFFFD");
    EXPECT_EQ(Unescape(""), u"");
}

TEST(Unescape, GivesBackEveryText) {
    std::mt19937 random(7);
    for (int k = 0; k < 20'000; ++k) {
        const std::u16string text = RandomText(random, 12);
        ASSERT_EQ(Unescape(EscapeText(text)), text);
        ASSERT_EQ(Unescape(EscapeName(text)), text);
    }
}

TEST(FindUnescaped, SkipsWhatABackslashPrecedes) {
    EXPECT_EQ(FindUnescaped("a=b", '='), 1U);
    EXPECT_EQ(FindUnescaped("\\==b", '='), 2U);
    EXPECT_EQ(FindUnescaped("\\\\=b", '='), 2U);
    EXPECT_EQ(FindUnescaped("a\\=", '='), std::string_view::npos);
    EXPECT_EQ(FindUnescaped("\\", '='), std::string_view::npos);
}

}  // namespace
}  // namespace korvane::posix
