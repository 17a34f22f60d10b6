#include "bindings/qt/desktop.h"

#include <gtest/gtest.h>

#include <QWindow>

namespace korvane::test {
namespace {

TEST(QtDesktop, AFrameHasSidesOfWhichNoneIsNegative) {
    EXPECT_TRUE(qt::CanBeFrame({1, 20, 1, 5}));
    EXPECT_TRUE(qt::CanBeFrame({0, 20, 0, 0}));
    EXPECT_FALSE(qt::CanBeFrame({}));
    // What X11 tells of a window whose frame is still one pixel in size.
    EXPECT_FALSE(qt::CanBeFrame({0, 0, -542, -345}));
    EXPECT_FALSE(qt::CanBeFrame({0, 0, 700, 400}));
}

TEST(QtDesktop, AWindowThatIsNotShownHasNoFrame) {
    EXPECT_TRUE(qt::MadeFrame(nullptr).isNull());
    const QWindow window;
    EXPECT_TRUE(qt::MadeFrame(&window).isNull());
}

TEST(QtDesktop, TellsWhatTheFrameAdds) {
    qt::Units units;
    units.twipsX = 15;
    units.twipsY = 10;
    const auto frame = qt::MetricsOf(units, {1, 20, 2, 5}).frame;
    EXPECT_EQ(frame.left, 15);
    EXPECT_EQ(frame.top, 200);
    EXPECT_EQ(frame.right, 30);
    EXPECT_EQ(frame.bottom, 50);
}

}  // namespace
}  // namespace korvane::test
