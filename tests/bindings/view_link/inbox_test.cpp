#include "bindings/view_link/inbox.h"

#include <gtest/gtest.h>

namespace korvane::view_link {
namespace {

using namespace platform;

std::string Frame(const FromView& message) {
    std::string frame;
    AppendFrame(frame, Encode(message));
    return frame;
}

TEST(Inbox, MessagesComeInOrderHoweverTheyAreCut) {
    auto [one, other] = ConnectedSockets();
    Inbox inbox;
    const std::string bytes = Frame(Pong{1}) + Frame(Event(Clicked{2, 3})) + Frame(Pong{2});
    std::vector<FromView> got;
    for (const char byte : bytes) {
        other.Send({&byte, 1});
        ASSERT_EQ(inbox.ReadFrom(one), Socket::Got::kSome);
        FromView message;
        if (inbox.IsReady()) {
            ASSERT_EQ(inbox.Take(message), Inbox::Taken::kMessage);
            got.push_back(message);
        }
        ASSERT_EQ(inbox.Take(message), Inbox::Taken::kNothing);
    }
    EXPECT_EQ(got, (std::vector<FromView>{Pong{1}, Event(Clicked{2, 3}), Pong{2}}));
}

TEST(Inbox, WhatIsNoMessageIsGarbage) {
    for (const std::string& bad : {std::string("\xFF\xFF\xFF\xFF", 4),
                                   std::string("\x01\0\0\0\x77", 5), std::string("\0\0\0\0", 4)}) {
        auto [one, other] = ConnectedSockets();
        Inbox inbox;
        other.Send(Frame(Pong{1}) + bad);
        inbox.ReadFrom(one);
        FromView message;
        EXPECT_EQ(inbox.Take(message), Inbox::Taken::kMessage);
        EXPECT_TRUE(inbox.IsReady());
        EXPECT_EQ(inbox.Take(message), Inbox::Taken::kGarbage);
    }
}

}  // namespace
}  // namespace korvane::view_link
