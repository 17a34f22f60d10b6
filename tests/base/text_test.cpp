#include "base/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <random>

namespace korvane {
namespace {

TEST(Utf, GoesThereAndBack) {
    for (const char16_t* text :
         {u"", u"abc", u"\u00e4\u20ac", u"\U0001F600x", u"\uFFFD", u"\uFFFF", u"\u0000"}) {
        EXPECT_EQ(ToUtf16(ToUtf8(text)), text);
    }
    EXPECT_EQ(ToUtf8(u"\u00e4\u20ac\U0001F600"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf16("\xF0\x9F\x98\x80").size(), 2U);
    const std::u16string withNull(u"a\0b", 3);
    EXPECT_EQ(ToUtf16(ToUtf8(withNull)), withNull);
}

TEST(Utf, EachBrokenUnitBecomesTheReplacementCharacter) {
    struct Case {
        std::string bytes;
        std::u16string text;
    };
    for (const Case& c : {
             Case{"\x80", u"\uFFFD"},
             Case{"a\xFFz", u"a\uFFFDz"},
             Case{"\xC3", u"\uFFFD"},  // cut off
             Case{"\xC3z", u"\uFFFDz"},
             Case{"\xE2\x82", u"\uFFFD\uFFFD"},
             Case{"\xC0\x80", u"\uFFFD\uFFFD"},  // longer than need be
             Case{"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
             Case{"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
             Case{"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond Unicode
             Case{"\xF5", u"\uFFFD"},
         }) {
        EXPECT_EQ(ToUtf16(c.bytes), c.text);
    }
    const char16_t high = 0xD83D;
    const char16_t low = 0xDE00;
    EXPECT_EQ(ToUtf8(std::u16string{high}), "\uFFFD");
    EXPECT_EQ(ToUtf8(std::u16string{low, high}), "\uFFFD\uFFFD");
    EXPECT_EQ(ToUtf8(std::u16string{high, u'a'}), "\uFFFDa");
    EXPECT_EQ(ToUtf8(std::u16string{high, low}), "\U0001F600");
}

TEST(Utf, WhateverComesInWellFormedTextGoesOut) {
    std::mt19937 random(3);
    for (int k = 0; k < 3000; ++k) {
        std::string bytes;
        for (auto count = random() % 12; count > 0; --count)
            bytes += static_cast<char>(random() % 256);
        const std::u16string text = ToUtf16(bytes);
        ASSERT_EQ(ToUtf16(ToUtf8(text)), text);
    }
}

TEST(Fold, FoldsTheLettersAToZOnlyInEveryLocale) {
    for (const char* locale : {"C", "C.UTF-8", "tr_TR.UTF-8", "de_DE.UTF-8"}) {
        std::setlocale(LC_ALL, locale);  // where it is installed
        for (char16_t ch = 0; ch < 0x250; ++ch) {
            const bool capital = ch >= u'A' && ch <= u'Z';
            ASSERT_EQ(FoldChar(ch), capital ? ch + 32 : ch);
        }
    }
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(Fold(u"AbC\u00c4\u0130\u212a"), u"abc\u00c4\u0130\u212a");
}

TEST(Fold, ComparesAndSearchesIgnoringTheirCase) {
    EXPECT_TRUE(EqualIgnoringCase(u"Offset", u"oFFSET"));
    EXPECT_FALSE(EqualIgnoringCase(u"\u00c4", u"\u00e4"));
    EXPECT_FALSE(EqualIgnoringCase(u"[", u"{")) << "32 apart, but no letters";
    EXPECT_FALSE(EqualIgnoringCase(u"ab", u"abc"));
    EXPECT_TRUE(ContainsIgnoringCase(u"OFFSET,INDEX,", u"index,"));
    EXPECT_TRUE(ContainsIgnoringCase(u"abc", u""));
    EXPECT_TRUE(ContainsIgnoringCase(u"", u""));
    EXPECT_FALSE(ContainsIgnoringCase(u"", u"a"));
    EXPECT_FALSE(ContainsIgnoringCase(u"abc", u"abcd"));
}

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(TrimBlanks(u"  a b  "), u"a b");
    EXPECT_EQ(TrimBlanks(u"\t a\u00a0"), u"\t a\u00a0");
    EXPECT_EQ(TrimBlanks(u"   "), u"");
    EXPECT_EQ(TrimBlanks(u""), u"");
}

TEST(Text, ReplacesEveryOccurrenceOnce) {
    EXPECT_EQ(ReplaceAll(u"It's 'so'", u"'", u"''"), u"It''s ''so''");
    EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(ReplaceAll(u"a$b$", u"$", u""), u"ab");
    EXPECT_EQ(ReplaceAll(u"", u"a", u"b"), u"");
}

TEST(Text, StartsWithAndAfterLast) {
    EXPECT_TRUE(StartsWith(u"{=A1}", u"{="));
    EXPECT_FALSE(StartsWith(u"=", u"=A"));
    EXPECT_TRUE(StartsWith(u"", u""));
    EXPECT_EQ(AfterLast(u"a!b!c", u'!'), u"c");
    EXPECT_EQ(AfterLast(u"abc", u'!'), u"abc");
    EXPECT_EQ(AfterLast(u"abc!", u'!'), u"");
}

}  // namespace
}  // namespace korvane
