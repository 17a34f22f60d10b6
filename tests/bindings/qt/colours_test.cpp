#include "bindings/qt/colours.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

const platform::Colour kRed = platform::Rgb(255, 0, 0);
const platform::Colour kBlue = platform::Rgb(0, 0, 255);
const platform::Colour kYellow = platform::Rgb(255, 255, 0);

TEST(QtColours, GoThereAndBack) {
    const auto colour = platform::Rgb(1, 20, 255);
    EXPECT_EQ(qt::ToQt(colour), QColor(1, 20, 255));
    EXPECT_EQ(qt::FromQt(qt::ToQt(colour)), colour);
}

TEST(QtColours, AreReadableOnLightAndDark) {
    for (const QColor& background : {QColor(Qt::white), QColor(0xEF, 0xEF, 0xEF),
                                     QColor(0x2B, 0x2C, 0x30), QColor(Qt::black)}) {
        for (const auto colour : {kRed, kBlue, kYellow, platform::Rgb(128, 128, 128)}) {
            const QColor shown = qt::MadeReadable(qt::ToQt(colour), background);
            EXPECT_GE(qt::Contrast(shown, background), 4.5);
        }
    }
    // It stays what it is as far as it can.
    EXPECT_EQ(qt::MadeReadable(Qt::blue, Qt::white), QColor(Qt::blue));
    EXPECT_GT(qt::MadeReadable(Qt::blue, Qt::black).blue(), 200);
}

TEST(QtColours, BlackIsTheDesktopsTextColour) {
    QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x2B, 0x2B, 0x2B));
    EXPECT_EQ(qt::TextColour(0, dark, QPalette::Text, QPalette::Base), dark.color(QPalette::Text));
}

}  // namespace
}  // namespace korvane::test
