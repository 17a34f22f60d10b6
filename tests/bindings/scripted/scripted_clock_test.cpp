#include "bindings/scripted/scripted_clock.h"

#include <gtest/gtest.h>

namespace korvane::scripted {
namespace {

class ScriptedClockTest : public testing::Test {
protected:
    std::string Date() {
        const platform::LocalTime time = clock_.Now();
        return std::to_string(time.year) + "-" + std::to_string(time.month) + "-" +
               std::to_string(time.day) + " " + std::to_string(time.hour);
    }

    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedClock clock_{accesses_};
};

TEST_F(ScriptedClockTest, StandsWhereItIsPut) {
    clock_.now = {2024, 2, 28, 23, 59, 58};
    clock_.ticks = 77;
    EXPECT_EQ(Date(), "2024-2-28 23");
    EXPECT_EQ(clock_.Now().second, 58);
    EXPECT_EQ(clock_.Ticks(), 77U);
}

TEST_F(ScriptedClockTest, AdvancesByDaysOverTheCalendar) {
    clock_.now = {2024, 2, 28, 23, 0, 0};
    clock_.Advance(1);
    EXPECT_EQ(Date(), "2024-2-29 23") << "the time of day stays";
    clock_.Advance(1);
    EXPECT_EQ(Date(), "2024-3-1 23");
    clock_.Advance(366);
    EXPECT_EQ(Date(), "2025-3-2 23");
    clock_.Advance(-61);
    EXPECT_EQ(Date(), "2024-12-31 23");
    clock_.now = {1899, 12, 29, 12, 0, 0};
    clock_.Advance(1);
    EXPECT_EQ(Date(), "1899-12-30 12") << "before the first serial day too";
}

TEST_F(ScriptedClockTest, IsNotedAndNeverFails) {
    accesses_->StartLog();
    accesses_->FailNthCall(1);
    EXPECT_NO_THROW(clock_.Now());
    EXPECT_NO_THROW(clock_.Ticks());
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"Clock.Now", "Clock.Ticks"}));
}

}  // namespace
}  // namespace korvane::scripted
