#include "bindings/view_link/socket.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "base/error.h"

namespace korvane::view_link {
namespace {

bool IsOpen(int number) { return ::fcntl(number, F_GETFD) != -1; }

TEST(Socket, ClosesItselfOnce) {
    int number = -1;
    {
        auto [first, other] = ConnectedSockets();
        number = first.number();
        Socket second(std::move(first));
        EXPECT_EQ(second.number(), number);
        Socket third;
        third = std::move(second);
        EXPECT_TRUE(IsOpen(number));
        third.Close();
        EXPECT_LT(third.number(), 0);
        EXPECT_FALSE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
}

TEST(Socket, NeverWaits) {
    auto [one, other] = ConnectedSockets();
    std::string bytes = "kept ";
    EXPECT_EQ(one.Receive(bytes, 100), Socket::Got::kNothing);
    EXPECT_EQ(bytes, "kept ");
    const std::string block(100'000, 'x');
    while (other.Send(block).value() > 0) {
    }
    EXPECT_EQ(one.Receive(bytes, 10), Socket::Got::kSome);
    EXPECT_EQ(bytes, "kept xxxxxxxxxx");
}

TEST(Socket, WhatWasSentBeforeTheEndIsRead) {
    auto [one, other] = ConnectedSockets();
    other.Send("last");
    other.Close();
    EXPECT_FALSE(one.Send("a"));
    std::string bytes;
    EXPECT_EQ(one.Receive(bytes, 100), Socket::Got::kSome);
    EXPECT_EQ(bytes, "last");
    EXPECT_EQ(one.Receive(bytes, 100), Socket::Got::kEnd);
}

TEST(Socket, IsNotInherited) {
    auto [one, other] = ConnectedSockets();
    EXPECT_EQ(::fcntl(one.number(), F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(::fcntl(other.number(), F_GETFD), FD_CLOEXEC);
    const int copy = ::dup(one.number());
    EXPECT_EQ(::fcntl(copy, F_GETFD), 0);
    const Socket adopted = AdoptSocket(copy);
    EXPECT_EQ(::fcntl(copy, F_GETFD), FD_CLOEXEC);
}

TEST(Socket, OnlyStreamSocketsAreAdopted) {
    EXPECT_THROW(AdoptSocket(-1), Error);
    const int file = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    EXPECT_THROW(AdoptSocket(file), Error);
    EXPECT_TRUE(IsOpen(file));
    ::close(file);
    const int datagrams = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    EXPECT_THROW(AdoptSocket(datagrams), Error);
    ::close(datagrams);
}

}  // namespace
}  // namespace korvane::view_link
