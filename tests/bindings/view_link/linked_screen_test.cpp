#include "bindings/view_link/linked_screen.h"

#include <gtest/gtest.h>

#include "bindings/view_link/linked_windows.h"

namespace korvane::view_link {
namespace {

using platform::PixelRect;

TEST(LinkedScreen, BeforeAnyViewTheDesktopIsAnOrdinaryOne) {
    test::LinkedWindows all(test::LongLimits());
    LinkedScreen screen(all.link);
    EXPECT_EQ(screen.TwipsPerPixelX(), 15);
    EXPECT_EQ(screen.TwipsPerPixelY(), 15);
    EXPECT_EQ(screen.Width(), 1920 * 15);
    EXPECT_EQ(screen.Height(), 1080 * 15);
    EXPECT_FALSE(screen.MonitorOf({0, 0, 10, 10}));
    EXPECT_EQ(screen.WindowBackground(), platform::Rgb(255, 255, 255));
    EXPECT_FALSE(screen.WindowRect(5));
    EXPECT_EQ(screen.FindWindow(u"A title"), 0);
}

TEST(LinkedScreen, TheViewTellsOfItsDesktopAndTheLastWordStays) {
    test::LinkedWindows all(test::LongLimits());
    LinkedScreen screen(all.link);
    auto view = all.AttachNear();
    EXPECT_EQ(screen.TwipsPerPixelX(), 12);
    EXPECT_EQ(screen.TwipsPerPixelY(), 10);
    EXPECT_EQ(screen.Width(), 12'000);
    EXPECT_EQ(screen.Height(), 8000);
    EXPECT_EQ(screen.WindowBackground(), platform::Rgb(250, 251, 252));
    EXPECT_EQ(all.windows.frame, (platform::FrameSize{60, 400, 60, 60}));
    auto metrics = test::SomeMetrics();
    metrics.twipsPerPixelX = 20;
    metrics.frame = {1, 2, 3, 4};
    view->Say(metrics);
    all.Turn();
    view->Leave();
    all.Turn();
    ASSERT_FALSE(all.link.HasView());
    EXPECT_EQ(screen.TwipsPerPixelX(), 20);
    EXPECT_EQ(all.windows.frame, (platform::FrameSize{1, 2, 3, 4}));
}

TEST(LinkedScreen, AWindowIsOnTheMonitorThatHoldsMostOfIt) {
    test::LinkedWindows all(test::LongLimits());
    LinkedScreen screen(all.link);
    auto view = all.AttachNear();
    const auto left = [&screen](const PixelRect& rect) {
        return screen.MonitorOf(rect).value().bounds.left;
    };
    EXPECT_EQ(left({900, 0, 1050, 100}), 0);
    EXPECT_EQ(left({950, 0, 1100, 100}), 1000);
    EXPECT_EQ(left({950, 0, 1050, 100}), 0) << "the first of equals";
    EXPECT_EQ(left({-500, -500, -400, -400}), 0) << "the primary one";
    EXPECT_EQ(left({-2'000'000'000, -2'000'000'000, 2'000'000'000, 2'000'000'000}), 1000);
    EXPECT_EQ(screen.MonitorOf({0, 0, 1, 1})->work.top, 20);
}

TEST(LinkedScreen, TheHostKnowsItsWindowsAndTheModelTheSystems) {
    test::LinkedWindows all(test::LongLimits());
    LinkedScreen screen(all.link);
    auto view = all.AttachNear();
    screen.windowRect = [](std::int64_t handle) -> std::optional<PixelRect> {
        if (handle != 5) return std::nullopt;
        return PixelRect{1, 2, 3, 4};
    };
    screen.findWindow = [](const std::u16string& title) { return title == u"Host" ? 5 : 0; };
    EXPECT_EQ(screen.WindowRect(5), (PixelRect{1, 2, 3, 4}));
    EXPECT_FALSE(screen.WindowRect(6));
    EXPECT_FALSE(screen.WindowRect(platform::kFirstOwnHandle + 99));
    all.form->Move({120, 100, 1200, 500});
    EXPECT_EQ(screen.WindowRect(all.form->Handle()), (PixelRect{10, 10, 110, 60}));
    EXPECT_EQ(screen.FindWindow(u"Host"), 5);
    EXPECT_EQ(screen.FindWindow(u"A window"), all.form->Handle());
    all.form->Hide();
    EXPECT_EQ(screen.FindWindow(u"A window"), 0);
}

}  // namespace
}  // namespace korvane::view_link
