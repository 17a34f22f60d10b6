#include "host/addin/busy.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

class BusyTest : public test::RunningAddin {};

TEST_F(BusyTest, EventsAreOffForItsTime) {
    Open();
    {
        BusyScope busy(state_);
        EXPECT_FALSE(host_->enableEvents);
        EXPECT_FALSE(state_.hostEventsOn);
        host_->cursor = 2;
        host_->statusBar = Value(u"working");
    }
    EXPECT_TRUE(host_->enableEvents);
    EXPECT_TRUE(state_.hostEventsOn);
    EXPECT_EQ(host_->cursor, -4143);
    EXPECT_TRUE(host_->statusBar.Boolean());
}

TEST_F(BusyTest, EveryWayOutGivesTheEventsBack) {
    Open();
    for (int nth = 1; nth <= 5; ++nth) {
        host_->enableEvents = true;
        accesses().FailNthCall(nth);
        EXPECT_THROW(
            {
                BusyScope busy(state_);
                busy.End();
            },
            Error)
            << nth;
        const bool restoring = accesses().lastFailure() == "Application.SetEnableEvents" && nth > 2;
        EXPECT_EQ(host_->enableEvents, !restoring) << nth;
        EXPECT_TRUE(state_.hostEventsOn);
    }
    host_->enableEvents = true;
}

}  // namespace
}  // namespace korvane
