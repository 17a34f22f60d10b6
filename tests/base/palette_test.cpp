#include "base/palette.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

TEST(Palette, HasFiftySixColours) {
    EXPECT_EQ(PaletteColor(1), 0.0);
    EXPECT_EQ(PaletteColor(2), 16777215.0);
    EXPECT_EQ(PaletteColor(3), 255.0) << "red is the lowest byte";
    EXPECT_EQ(PaletteColor(4), 65280.0);
    EXPECT_EQ(PaletteColor(5), 16711680.0);
    EXPECT_EQ(PaletteColor(6), 65535.0) << "yellow";
    EXPECT_EQ(PaletteColor(56), 0x33 + 256.0 * 0x33 + 65536.0 * 0x33);
    for (const int index : {0, -1, 57, -4142})
        EXPECT_EQ(PaletteColor(index), std::nullopt) << index;
}

TEST(Palette, TheNearestEntryOfAColourIsItself) {
    for (int index = 1; index <= 56; ++index) {
        const int nearest = NearestPaletteIndex(*PaletteColor(index));
        EXPECT_EQ(PaletteColor(nearest), PaletteColor(index));
        EXPECT_LE(nearest, index) << "the first of equals";
    }
}

TEST(Palette, OtherColoursFindTheirNeighbour) {
    EXPECT_EQ(NearestPaletteIndex(254), 3);       // almost red
    EXPECT_EQ(NearestPaletteIndex(0xFEFEFE), 2);  // almost white
    EXPECT_EQ(NearestPaletteIndex(0x010101), 1);  // almost black
    EXPECT_EQ(NearestPaletteIndex(65535 + 1 * 65536), 6);
}

}  // namespace
}  // namespace korvane
