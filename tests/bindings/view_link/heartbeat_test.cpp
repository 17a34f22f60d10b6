#include "bindings/view_link/heartbeat.h"

#include <gtest/gtest.h>

namespace korvane::view_link {
namespace {

using std::chrono::milliseconds;

constexpr Clock::time_point kBegin{milliseconds(1000)};

LinkLimits Limits() {
    LinkLimits limits;
    limits.pingInterval = milliseconds(10);
    limits.stallTime = milliseconds(100);
    limits.startTime = milliseconds(400);
    return limits;
}

TEST(Heartbeat, TheIntroductionIsAwaitedLonger) {
    Heartbeat heartbeat(Limits(), kBegin);
    EXPECT_TRUE(heartbeat.IsAwaiting());
    EXPECT_FALSE(heartbeat.IsPingDue(kBegin + milliseconds(1000)));
    for (int time = 50; time < 400; time += 50) {
        heartbeat.Watch(kBegin + milliseconds(time));
        EXPECT_FALSE(heartbeat.IsOver(1));
    }
    heartbeat.Watch(kBegin + milliseconds(400));
    EXPECT_TRUE(heartbeat.IsOver(1));
    heartbeat.Introduce();
    EXPECT_FALSE(heartbeat.IsOver(1));
    EXPECT_FALSE(heartbeat.IsAwaiting());
}

TEST(Heartbeat, APingIsDueWhenTheViewWasQuietForAWhile) {
    Heartbeat heartbeat(Limits(), kBegin);
    heartbeat.Introduce();
    EXPECT_FALSE(heartbeat.IsPingDue(kBegin + milliseconds(9)));
    EXPECT_TRUE(heartbeat.IsPingDue(kBegin + milliseconds(10)));
    EXPECT_EQ(heartbeat.NextTimeout(kBegin + milliseconds(4)), milliseconds(6));
    EXPECT_EQ(heartbeat.next(), 1);
    EXPECT_EQ(heartbeat.Ping(kBegin + milliseconds(10)), 1);
    EXPECT_FALSE(heartbeat.IsPingDue(kBegin + milliseconds(99)));
    EXPECT_EQ(heartbeat.NextTimeout(kBegin + milliseconds(15)), milliseconds(20));
    EXPECT_FALSE(heartbeat.Answer(0));
    EXPECT_FALSE(heartbeat.Answer(2));
    EXPECT_TRUE(heartbeat.IsAwaiting());
    EXPECT_TRUE(heartbeat.Answer(1));
    EXPECT_FALSE(heartbeat.Answer(1));
    EXPECT_FALSE(heartbeat.IsAwaiting());
}

TEST(Heartbeat, WhatTheViewTakesCountsAsASignOfLife) {
    Heartbeat heartbeat(Limits(), kBegin);
    heartbeat.Introduce();
    heartbeat.Ping(kBegin);
    for (int time = 20; time < 1000; time += 20) {
        heartbeat.Watch(kBegin + milliseconds(time));
        heartbeat.Move();
        ASSERT_FALSE(heartbeat.IsOver(1));
    }
}

TEST(Heartbeat, TimeDuringWhichNobodyWatchedDoesNotCount) {
    Heartbeat heartbeat(Limits(), kBegin);
    heartbeat.Introduce();
    heartbeat.Ping(kBegin);
    heartbeat.Watch(kBegin + std::chrono::hours(1));
    EXPECT_FALSE(heartbeat.IsOver(1));
    for (int k = 1; k <= 3; ++k) {
        heartbeat.Watch(kBegin + std::chrono::hours(1) + milliseconds(25 * k));
    }
    EXPECT_TRUE(heartbeat.IsOver(1));
    EXPECT_FALSE(heartbeat.IsOver(4));
}

}  // namespace
}  // namespace korvane::view_link
