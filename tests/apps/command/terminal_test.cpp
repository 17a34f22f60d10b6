#include "apps/command/terminal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <clocale>

namespace korvane::command {
namespace {

// Character widths need a UTF-8 locale, as the program sets it.
class TerminalTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }
};

TEST_F(TerminalTest, CountsColumnsNotBytes) {
    EXPECT_EQ(DisplayWidth(""), 0);
    EXPECT_EQ(DisplayWidth("abc"), 3);
    EXPECT_EQ(DisplayWidth("\u00e4\u00f6"), 2);
    EXPECT_EQ(DisplayWidth("\u65e5\u672c"), 4) << "wide characters take two columns";
    EXPECT_EQ(DisplayWidth("e\u0301"), 1) << "a combining accent takes none";
    EXPECT_EQ(DisplayWidth("\U0001F600"), 2);
}

TEST_F(TerminalTest, BytesThatAreNoTextStillHaveAWidth) {
    EXPECT_EQ(DisplayWidth("a\xFF"), 2);
    EXPECT_GE(DisplayWidth("\x80\x80"), 1);
    EXPECT_EQ(DisplayWidth("\x1b"), 1);
}

TEST_F(TerminalTest, PutsATextOnOneHarmlessLine) {
    EXPECT_EQ(OneLine("a\nb\tc"), "a b c");
    EXPECT_EQ(OneLine("\x1b[31mred"), "\uFFFD[31mred");
    EXPECT_EQ(OneLine("a\x7F"), "a\uFFFD");
    EXPECT_EQ(OneLine("a\r"), "a\uFFFD");
    EXPECT_EQ(OneLine("\u009b31m"), "\uFFFD31m") << "a control character of two bytes";
    EXPECT_EQ(OneLine("\u00a0\u65e5"), "\u00a0\u65e5");
}

TEST_F(TerminalTest, BytesThatAreNoTextNeverReachTheTerminal) {
    // Some terminals take the lone byte 9B for the start of a command.
    EXPECT_EQ(OneLine("a\x9B"
                      "31mb"),
              "a\uFFFD31mb");
    EXPECT_EQ(OneLine("\xC2\x9B\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(OneLine("\xFF\xFE"), "\uFFFD\uFFFD");
    EXPECT_EQ(OneLine("\xE6\x97"), "\uFFFD\uFFFD");
}

TEST_F(TerminalTest, CutsToColumnsAndSaysSo) {
    EXPECT_EQ(CutToWidth("abcdef", 6), "abcdef");
    EXPECT_EQ(CutToWidth("abcdef", 5), "abcd…");
    EXPECT_EQ(CutToWidth("abcdef", 1), "…");
    EXPECT_EQ(CutToWidth("abcdef", 0), "");
    EXPECT_EQ(CutToWidth("abcdef", -3), "");
    EXPECT_EQ(CutToWidth("\u65e5\u672c\u8a9e", 4), "\u65e5…") << "half a wide character is none";
    EXPECT_EQ(CutToWidth("e\u0301e\u0301e\u0301", 2), "e\u0301…");
    for (int width = 0; width < 8; ++width) {
        EXPECT_LE(DisplayWidth(CutToWidth("a\u65e5b\u672cc", width)), width);
    }
}

TEST_F(TerminalTest, APipeGetsThePlainStyle) {
    // The tests' own output is no terminal wherever they are run by a program.
    if (isatty(1) != 0) GTEST_SKIP() << "standard output is a terminal";
    const Style style = DetectStyle();
    EXPECT_FALSE(style.decorated);
    EXPECT_EQ(style.width, 0);
}

}  // namespace
}  // namespace korvane::command
