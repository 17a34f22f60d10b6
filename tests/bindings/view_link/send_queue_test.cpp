#include "bindings/view_link/send_queue.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/window/codec.h"

namespace korvane::view_link {
namespace {

TEST(SendQueue, WhatIsSentArrivesInOrderWhateverTheSocketTakes) {
    auto [one, other] = ConnectedSockets();
    SendQueue queue(std::size_t{64} << 20);
    std::string expected;
    for (int k = 0; k < 5000; ++k) {
        const std::string message(static_cast<std::size_t>(k % 700), static_cast<char>(k));
        platform::AppendFrame(expected, message);
        ASSERT_TRUE(queue.Add(message));
    }
    EXPECT_EQ(queue.size(), expected.size());
    std::string got;
    bool blocked = false;
    while (!queue.empty()) {
        const auto flow = queue.SendTo(one);
        ASSERT_NE(flow, SendQueue::Flow::kBroken);
        blocked = blocked || flow == SendQueue::Flow::kBlocked;
        other.Receive(got, 10'000);
    }
    while (other.Receive(got, 100'000) == Socket::Got::kSome) {
    }
    EXPECT_TRUE(blocked);
    EXPECT_TRUE(got == expected);
}

TEST(SendQueue, HoldsNoMoreThanItMay) {
    SendQueue queue(100);
    EXPECT_TRUE(queue.Add(std::string(40, 'a')));
    EXPECT_TRUE(queue.Add(std::string(52, 'b')));
    EXPECT_EQ(queue.size(), 100U);
    EXPECT_FALSE(queue.Add(""));
    queue.Clear();
    EXPECT_TRUE(queue.empty());
    EXPECT_TRUE(queue.Add(""));
}

TEST(SendQueue, LeavesOutWhatNoReaderWouldAccept) {
    SendQueue queue(std::size_t{64} << 20);
    EXPECT_TRUE(queue.Add(std::string(platform::kLongestMessage + 1, 'a')));
    EXPECT_TRUE(queue.empty());
    EXPECT_TRUE(queue.Add(std::string(platform::kLongestMessage, 'a')));
    EXPECT_FALSE(queue.empty());
}

TEST(SendQueue, NoticesThatTheOtherEndIsGone) {
    auto [one, other] = ConnectedSockets();
    SendQueue queue(1000);
    queue.Add("a");
    other.Close();
    EXPECT_EQ(queue.SendTo(one), SendQueue::Flow::kBroken);
}

}  // namespace
}  // namespace korvane::view_link
