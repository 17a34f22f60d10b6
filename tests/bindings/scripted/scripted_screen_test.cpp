#include "bindings/scripted/scripted_screen.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/error.h"

namespace korvane::scripted {
namespace {

using platform::Monitor;
using platform::PixelRect;

class ScriptedScreenTest : public testing::Test {
protected:
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedScreen screen_{accesses_};
};

TEST_F(ScriptedScreenTest, IsOneMonitorUnlessItIsLaidOutOtherwise) {
    EXPECT_EQ(screen_.TwipsPerPixelX(), 15);
    EXPECT_EQ(screen_.TwipsPerPixelY(), 15);
    EXPECT_EQ(screen_.Width(), 28800);
    EXPECT_EQ(screen_.Height(), 16200);
    EXPECT_EQ(screen_.WindowBackground(), 0xFFFFFF);
    const auto monitor = screen_.MonitorOf({100, 100, 200, 200});
    ASSERT_TRUE(monitor);
    EXPECT_EQ(monitor->bounds, (PixelRect{0, 0, 1920, 1080}));
    EXPECT_EQ(monitor->work, (PixelRect{0, 0, 1920, 1040}));
}

TEST_F(ScriptedScreenTest, MeasuresThePrimaryMonitorInTwips) {
    screen_.twipsPerPixelX = 12;
    screen_.twipsPerPixelY = 10;
    screen_.monitors = {{{-1000, 50, 0, 850}, {}}, {{0, 0, 4000, 3000}, {}}};
    EXPECT_EQ(screen_.TwipsPerPixelX(), 12);
    EXPECT_EQ(screen_.TwipsPerPixelY(), 10);
    EXPECT_EQ(screen_.Width(), 12000);
    EXPECT_EQ(screen_.Height(), 8000);
    screen_.monitors.clear();
    EXPECT_THROW(screen_.Width(), Error);
    EXPECT_THROW(screen_.Height(), Error);
}

TEST_F(ScriptedScreenTest, TheMonitorOfARectangleHoldsMostOfIt) {
    screen_.monitors = {{{0, 0, 1000, 1000}, {}}, {{1000, 0, 2000, 1000}, {}}};
    const auto left = [&](const PixelRect& rect) { return screen_.MonitorOf(rect)->bounds.left; };
    EXPECT_EQ(left({950, 0, 1100, 10}), 1000);
    EXPECT_EQ(left({900, 0, 1050, 10}), 0);
    EXPECT_EQ(left({950, 0, 1050, 10}), 0) << "the first of equals";
    EXPECT_EQ(left({1500, 900, 1510, 5000}), 1000) << "a part of it lies outside";
    EXPECT_EQ(left({-500, -500, -400, -400}), 0) << "none holds it: the primary one";
    EXPECT_EQ(left({2100, 1100, 2200, 1200}), 0) << "beside in both directions";
}

TEST_F(ScriptedScreenTest, MayNotKnowItsMonitors) {
    screen_.monitorsKnown = false;
    EXPECT_FALSE(screen_.MonitorOf({0, 0, 1, 1}));
    EXPECT_EQ(screen_.Width(), 28800);
    screen_.monitorsKnown = true;
    screen_.monitors.clear();
    EXPECT_FALSE(screen_.MonitorOf({0, 0, 1, 1}));
}

TEST_F(ScriptedScreenTest, FindsWindowsByTheirExactTitle) {
    screen_.windows = {{7, {u"Host", {1, 2, 3, 4}}}, {5, {u"Twin", {}}}, {6, {u"Twin", {}}}};
    EXPECT_EQ(screen_.FindWindow(u"Host"), 7);
    EXPECT_EQ(screen_.FindWindow(u"Twin"), 5);
    EXPECT_EQ(screen_.FindWindow(u"host"), 0);
    EXPECT_EQ(screen_.FindWindow(u"Hos"), 0);
    EXPECT_EQ(*screen_.WindowRect(7), (PixelRect{1, 2, 3, 4}));
    EXPECT_FALSE(screen_.WindowRect(8));
}

TEST_F(ScriptedScreenTest, IsNotedAndFails) {
    accesses_->StartLog();
    const std::vector<std::pair<std::string, std::function<void()>>> members{
        {"Screen.TwipsPerPixelX", [&] { screen_.TwipsPerPixelX(); }},
        {"Screen.TwipsPerPixelY", [&] { screen_.TwipsPerPixelY(); }},
        {"Screen.Width", [&] { screen_.Width(); }},
        {"Screen.Height", [&] { screen_.Height(); }},
        {"Screen.WindowRect", [&] { screen_.WindowRect(1); }},
        {"Screen.MonitorOf", [&] { screen_.MonitorOf({}); }},
        {"Screen.FindWindow", [&] { screen_.FindWindow(u"Host"); }},
        {"Screen.WindowBackground", [&] { screen_.WindowBackground(); }},
    };
    for (const auto& [member, call] : members) {
        EXPECT_NO_THROW(call()) << member;
        EXPECT_EQ(accesses_->CountOf(member), 1) << member;
        accesses_->FailMember(member);
        EXPECT_THROW(call(), Error) << member;
    }
    EXPECT_EQ(accesses_->CountOf("Screen.FindWindow Host"), 2);
}

}  // namespace
}  // namespace korvane::scripted
