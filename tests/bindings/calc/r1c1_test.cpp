#include "bindings/calc/r1c1.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::calc {
namespace {

std::string At(std::u16string_view text, int row, int column) {
    const auto made = WithoutRelative(text, row, column);
    return made ? ToUtf8(*made) : "nothing";
}

TEST(R1C1, RelativePartsAreCountedFromTheCell) {
    EXPECT_EQ(At(u"RC", 5, 3), "R5C3");
    EXPECT_EQ(At(u"RC[1]", 5, 3), "R5C4");
    EXPECT_EQ(At(u"R[-1]C", 5, 3), "R4C3");
    EXPECT_EQ(At(u"R2C[-2]", 5, 3), "R2C1");
    EXPECT_EQ(At(u"r[10]c4", 5, 3), "R15C4");
    EXPECT_EQ(At(u"R[-1]C:R[-1]C[1]", 5, 3), "R4C3:R4C4");
    EXPECT_EQ(At(u"R1C1:RC", 5, 3), "R1C1:R5C3");
    EXPECT_EQ(At(u"'My Sheet'!RC[1]", 5, 3), "'My Sheet'!R5C4");
}

TEST(R1C1, WholeRowsAndColumns) {
    EXPECT_EQ(At(u"R", 5, 3), "R5");
    EXPECT_EQ(At(u"C[-1]", 5, 3), "C2");
    EXPECT_EQ(At(u"R[1]:R[2]", 5, 3), "R6:R7");
}

TEST(R1C1, WhatLeavesTheSheetIsAnError) {
    EXPECT_EQ(At(u"RC[-1]", 5, 1), "#REF!");
    EXPECT_EQ(At(u"R[1]C", 1'048'576, 1), "#REF!");
    EXPECT_EQ(At(u"RC[99999999999]", 1, 1), "nothing");
}

TEST(R1C1, OtherTextsAreLeftAlone) {
    for (const char16_t* text : {u"R1C1", u"R1C1:R2C2", u"A1", u"Rate", u"", u"!", u"R[", u"R[-]C",
                                 u"R[1C", u"RC:", u"RCx", u"C1:C2"}) {
        EXPECT_EQ(At(text, 5, 3), "nothing") << ToUtf8(text);
    }
}

}  // namespace
}  // namespace korvane::calc
