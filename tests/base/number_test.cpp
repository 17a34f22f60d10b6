#include "base/number.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "base/error.h"
#include "base/text.h"

namespace korvane {
namespace {

TEST(Number, ATextIsNumericByItsForm) {
    struct Case {
        const char16_t* text;
        double number;
    };
    for (const Case& c : {Case{u"0", 0}, Case{u"12", 12}, Case{u"-3", -3}, Case{u"+3", 3},
                          Case{u"1.5", 1.5}, Case{u".5", 0.5}, Case{u"5.", 5}, Case{u"-.5", -0.5},
                          Case{u"1E5", 1e5}, Case{u"1e-5", 1e-5}, Case{u"1E+5", 1e5},
                          Case{u"5.E2", 500}, Case{u"  7  ", 7}, Case{u"\t8\n", 8}, Case{u"007", 7},
                          Case{u"12345678901234567890", 12345678901234567890.0}}) {
        EXPECT_TRUE(IsNumeric(c.text)) << ToUtf8(c.text);
        EXPECT_EQ(ParseNumber(c.text), c.number) << ToUtf8(c.text);
    }
    for (const auto* text : {u"",     u" ",   u".",    u"-",     u"+",      u"E5",      u".E5",
                             u"1E",   u"1E+", u"1E5.", u"1 2",   u"1,5",    u"1.2.3",   u"--1",
                             u"+-1",  u"- 1", u"1-",   u"0x10",  u"&H1",    u"INF",     u"NaN",
                             u"TRUE", u"1%",  u"$1",   u"1E5E5", u"\u0661", u"\u00a07", u"(1)"}) {
        EXPECT_FALSE(IsNumeric(text)) << ToUtf8(text);
        EXPECT_EQ(ParseNumber(text), std::nullopt) << ToUtf8(text);
    }
}

TEST(Number, OneOutsideADoublesRangeIsInfiniteOrZero) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ParseNumber(u"1E400"), kInfinity);
    EXPECT_EQ(ParseNumber(u"-1E400"), -kInfinity);
    EXPECT_EQ(ParseNumber(u"1E99999999999999999999"), kInfinity);
    EXPECT_EQ(ParseNumber(u"1E-400"), 0);
    EXPECT_EQ(ParseNumber(u"1E-99999999999999999999"), 0);
    EXPECT_EQ(ParseNumber(u"0.0000000001E-320"), 0);
    EXPECT_EQ(ParseNumber(std::u16string(400, u'9')), kInfinity);
    EXPECT_EQ(ParseNumber(u"0E999999"), 0);
    EXPECT_EQ(ParseNumber(u"0." + std::u16string(400, u'0') + u"1"), 0);
}

TEST(Number, StandsAtTheFrontOfAText) {
    struct Case {
        const char16_t* text;
        double number;
    };
    for (const Case& c :
         {Case{u"", 0},          Case{u"W", 0},         Case{u".", 0},         Case{u"-", 0},
          Case{u"-.", 0},        Case{u"E5", 0},        Case{u"0.5W0.5", 0.5}, Case{u"0.5", 0.5},
          Case{u".5L", 0.5},     Case{u"2.", 2},        Case{u"1.2.3", 1.2},   Case{u"-2", -2},
          Case{u"+2", 2},        Case{u"--2", 0},       Case{u"- 2", -2},      Case{u" 12 3", 123},
          Case{u"\t1\n2x3", 12}, Case{u"1 . 5 x", 1.5}, Case{u"1E3x", 1000},   Case{u"1 e 3", 1000},
          Case{u"1e-2", 0.01},   Case{u"1e", 1},        Case{u"1e+", 1},       Case{u"1,5", 1},
          Case{u"0x10", 0},      Case{u"12.0", 12},     Case{u"9.", 9}}) {
        EXPECT_EQ(LeadingNumber(c.text), c.number) << ToUtf8(c.text);
    }
    EXPECT_EQ(LeadingNumber(u"1E400;"), std::numeric_limits<double>::infinity());
}

TEST(Number, BecomesATextOfFifteenDigits) {
    struct Case {
        double number;
        const char16_t* text;
    };
    for (const Case& c :
         {Case{0, u"0"}, Case{-0.0, u"0"}, Case{1, u"1"}, Case{-1.5, u"-1.5"}, Case{0.1, u"0.1"},
          Case{0.1 + 0.2, u"0.3"}, Case{1e14, u"100000000000000"},
          Case{123456789012345, u"123456789012345"}, Case{1e15, u"1E+15"},
          Case{1234567890123456, u"1.23456789012346E+15"}, Case{0.0001, u"0.0001"},
          Case{0.00001, u"1E-05"}, Case{1e100, u"1E+100"}, Case{-2.5e-7, u"-2.5E-07"},
          Case{1.0 / 3, u"0.333333333333333"}, Case{2.0 / 3, u"0.666666666666667"}}) {
        EXPECT_EQ(NumberText(c.number), c.text);
    }
}

TEST(Number, HasTheSameTextInEveryLocale) {
    for (const char* locale : {"C", "C.UTF-8", "de_DE.UTF-8"}) {
        std::setlocale(LC_ALL, locale);  // where it is installed
        EXPECT_EQ(NumberText(1.5), u"1.5");
        EXPECT_EQ(ParseNumber(u"1.5"), 1.5);
        EXPECT_EQ(LeadingNumber(u"1.5W"), 1.5);
    }
    std::setlocale(LC_ALL, "C");
}

TEST(Number, IsWrittenAsThePrintFormSays) {
    std::mt19937_64 random(11);
    for (int k = 0; k < 20000; ++k) {
        const double number = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                         static_cast<int>(random() % 200) - 130);
        char text[64];
        std::snprintf(text, sizeof text, "%.15G", number);
        ASSERT_EQ(ToUtf8(NumberText(number)), number == 0 ? "0" : text);
    }
}

TEST(Number, RoundsHalvesToTheEvenNeighbour) {
    for (const auto& [number, whole] : {std::pair{0.5, 0},
                                        {1.5, 2},
                                        {2.5, 2},
                                        {3.5, 4},
                                        {-0.5, 0},
                                        {-1.5, -2},
                                        {-2.5, -2},
                                        {2.4999, 2},
                                        {2.5001, 3},
                                        {2147483647.4, 2147483647},
                                        {-2147483648.5, std::numeric_limits<int>::min()}}) {
        EXPECT_EQ(RoundToWhole(number), whole) << number;
    }
    for (const double number : {2147483647.5, 2147483648.0, -2147483649.0, 1e300,
                                std::numeric_limits<double>::infinity(), std::nan("")}) {
        try {
            RoundToWhole(number);
            FAIL() << number;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorOverflow);
        }
    }
}

TEST(Number, ATextWithoutANumericReadingIsATypeMismatch) {
    EXPECT_EQ(TextToWhole(u" 2.5 "), 2);
    for (const auto* text : {u"", u"abc", u"#N/A", u"True"}) {
        try {
            TextToWhole(text);
            FAIL() << ToUtf8(text);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorTypeMismatch);
        }
    }
}

TEST(Number, ABooleanIsItsNameOrANumber) {
    for (const auto* text : {u"True", u"TRUE", u"true", u"1", u"-0.1", u" 2 "})
        EXPECT_TRUE(TextToBoolean(text));
    for (const auto* text : {u"False", u"FALSE", u"0", u"0.0", u"-0"})
        EXPECT_FALSE(TextToBoolean(text));
    for (const auto* text : {u"", u"yes", u" True", u"#N/A"}) {
        EXPECT_THROW(TextToBoolean(text), Error) << ToUtf8(text);
    }
}

}  // namespace
}  // namespace korvane
