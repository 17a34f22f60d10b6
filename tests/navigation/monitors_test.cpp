#include "navigation/monitors.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/scripted/scripted_platform.h"
#include "platform/window/test_windows.h"

namespace korvane::MMonitors {
namespace {

constexpr std::int64_t kHost = 7;

class MonitorsTest : public testing::Test {
protected:
    MonitorsTest() {
        // A second monitor to the right, its task bar at the bottom.
        platform_.screen.monitors = {{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}},
                                     {{1920, 0, 3200, 1024}, {1920, 0, 3200, 984}}};
        HostOn(0);
    }
    void HostOn(std::size_t monitor) {
        platform_.screen.windows[kHost] = {u"Host", platform_.screen.monitors[monitor].bounds};
    }
    void Apply(const Bounds& bounds) { ApplyBounds(platform_.screen, kHost, *form_, bounds); }

    scripted::ScriptedPlatform platform_;
    std::unique_ptr<platform::Form> form_ = platform_.windows.Load(test::EveryControl());
};

TEST_F(MonitorsTest, MaxAndMin) {
    EXPECT_EQ(Max(-2, 1), 1);
    EXPECT_EQ(Max(3, 1), 3);
    EXPECT_EQ(Min(-2, 1), -2);
    EXPECT_EQ(Min(3, 1), 1);
}

TEST_F(MonitorsTest, BoundsAreFourWholeNumbers) {
    EXPECT_EQ(ParseBounds(u"1200;300;6000;9000"), (Bounds{1200, 300, 6000, 9000}));
    EXPECT_EQ(ParseBounds(u"-15; 30;6000.4;9000;more"), (Bounds{-15, 30, 6000, 9000}));
    for (const auto* odd : {u"", u"1;2;3", u"1;2;3;", u"a;b;c;d", u"1 2 3 4", u";;;"}) {
        try {
            ParseBounds(odd);
            ADD_FAILURE();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorTypeMismatch);
        }
    }
    EXPECT_THROW(ParseBounds(u"99999999999;0;0;0"), Error);
}

TEST_F(MonitorsTest, TheTextIsRelativeToTheDialogsMonitor) {
    form_->Move({1920 * 15 + 300, 1200, 9000, 6000});
    EXPECT_EQ(BoundsText(platform_.screen, *form_), u"1200;300;6000;9000");
    form_->Move({300, 1200, 9000, 6000});
    EXPECT_EQ(BoundsText(platform_.screen, *form_), u"1200;300;6000;9000");
    platform_.screen.monitorsKnown = false;
    form_->Move({1920 * 15 + 300, 1200, 9000, 6000});
    EXPECT_EQ(BoundsText(platform_.screen, *form_), u"1200;29100;6000;9000");
}

TEST_F(MonitorsTest, ADialogOpensAtTheSameOffsetOnTheHostsMonitor) {
    Apply({1200, 300, 6000, 9000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{300, 1200, 9000, 6000}));
    HostOn(1);
    Apply({1200, 300, 6000, 9000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{1920 * 15 + 300, 1200, 9000, 6000}));
}

TEST_F(MonitorsTest, ADialogIsPulledIntoTheWorkArea) {
    Apply({1040 * 15 - 5000, 1920 * 15 - 100, 6000, 9000});
    EXPECT_EQ(form_->Top(), 1040 * 15 - 6000);
    EXPECT_EQ(form_->Left(), 1920 * 15 - 9000);
    Apply({-3000, -3000, 6000, 9000});
    EXPECT_EQ(form_->Top(), 0);
    EXPECT_EQ(form_->Left(), 0);
}

TEST_F(MonitorsTest, ALargerDialogKeepsItsCornerInside) {
    HostOn(1);
    Apply({500, 500, 60000, 60000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{1920 * 15, 0, 60000, 60000}));
}

TEST_F(MonitorsTest, WithoutMonitorsADialogIsAtTheLeftEdgeOrBeyond) {
    platform_.screen.monitorsKnown = false;
    Apply({1200, 300, 6000, 9000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{0, 1200, 9000, 6000}));
    Apply({-5, -300, 6000, 9000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{-300, 0, 9000, 6000}));
    Apply({90000, 0, 6000, 1920 * 15 + 600});
    EXPECT_EQ(form_->Top(), 1080 * 15 - 6000);
    EXPECT_EQ(form_->Left(), -600);
}

TEST_F(MonitorsTest, AHostWithoutAWindowMeansThePrimaryMonitor) {
    platform_.screen.windows.clear();
    Apply({1200, 300, 6000, 9000});
    EXPECT_EQ(form_->GetPlace(), (platform::Place{300, 1200, 9000, 6000}));
}

TEST_F(MonitorsTest, BoundsSurviveARoundTripAtAnyScale) {
    for (const double scale : {15.0, 12.0, 7.5, 14.2857}) {
        platform_.screen.twipsPerPixelX = platform_.screen.twipsPerPixelY = scale;
        for (const std::size_t monitor : {0U, 1U}) {
            HostOn(monitor);
            Apply({120, 130, 2000, 3000});
            EXPECT_EQ(BoundsText(platform_.screen, *form_), u"120;130;2000;3000") << scale;
        }
    }
}

}  // namespace
}  // namespace korvane::MMonitors
