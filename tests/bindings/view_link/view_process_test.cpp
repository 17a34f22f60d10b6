#include "bindings/view_link/view_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

#include "base/error.h"
#include "bindings/view_link/limits.h"

namespace korvane::view_link {
namespace {

using std::chrono::milliseconds;

std::vector<std::string> Program(const char* mode) { return {KORVANE_VIEW_PROGRAM, mode}; }

std::size_t OpenDescriptors() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                      std::filesystem::directory_iterator()));
}

bool HasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

// What the program says within a second.
std::string Hear(const Socket& link, std::size_t atLeast) {
    std::string bytes;
    const auto end = Clock::now() + milliseconds(10'000);
    while (bytes.size() < atLeast && Clock::now() < end) {
        if (link.Receive(bytes, 1000) == Socket::Got::kEnd) break;
    }
    return bytes;
}

TEST(ViewProcess, TheProgramSpeaksOverTheLinkAndEndsWithIt) {
    ViewProcess process(Program("follows"));
    EXPECT_GT(process.id(), 0);
    EXPECT_FALSE(process.HasEnded());
    Socket link = process.TakeLink();
    EXPECT_GE(Hear(link, 10).size(), 10U);
    link.Close();
    const auto begin = Clock::now();
    process.End(milliseconds(10'000));
    EXPECT_LT(Clock::now() - begin, milliseconds(5000));
    EXPECT_EQ(process.id(), 0);
    EXPECT_TRUE(process.HasEnded());
    EXPECT_TRUE(HasNoChild());
}

TEST(ViewProcess, OneThatDoesNotEndIsKilled) {
    ViewProcess process(Program("stays"));
    Hear(process.TakeLink(), 10);
    const auto begin = Clock::now();
    process.End(milliseconds(50));
    EXPECT_GE(Clock::now() - begin, milliseconds(50));
    EXPECT_TRUE(process.HasEnded());
    EXPECT_TRUE(HasNoChild());
}

TEST(ViewProcess, AStoppedOneIsKilledToo) {
    ViewProcess process(Program("stops"));
    Hear(process.TakeLink(), 10);
    process.Kill();
    const auto end = Clock::now() + milliseconds(10'000);
    while (!process.HasEnded() && Clock::now() < end) std::this_thread::yield();
    EXPECT_TRUE(process.HasEnded());
    EXPECT_TRUE(HasNoChild());
}

TEST(ViewProcess, LettingGoEndsItAtOnce) {
    const auto begin = Clock::now();
    { const ViewProcess process(Program("mute")); }
    EXPECT_LT(Clock::now() - begin, milliseconds(3000));
    EXPECT_TRUE(HasNoChild());
}

TEST(ViewProcess, SomebodyElseMayHaveWaitedForIt) {
    ViewProcess process(Program("dies"));
    EXPECT_EQ(::waitpid(process.id(), nullptr, 0), process.id());
    EXPECT_TRUE(process.HasEnded());
    process.Kill();
    process.End(milliseconds(1000));
}

TEST(ViewProcess, AProgramThatIsNotThereRaisesItsName) {
    const std::size_t before = OpenDescriptors();
    try {
        const ViewProcess process({"/no/such/view"});
        FAIL();
    } catch (const Error& error) {
        EXPECT_NE(error.description().find(u"/no/such/view"), std::u16string::npos);
    }
    EXPECT_THROW(ViewProcess({"/dev/null"}), Error);
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_TRUE(HasNoChild());
}

TEST(ViewProcess, FiftyOfThemLeaveNothing) {
    const std::size_t before = OpenDescriptors();
    for (int k = 0; k < 50; ++k) {
        ViewProcess process(Program(k % 2 == 0 ? "follows" : "dies"));
        if (k % 4 < 2) process.End(milliseconds(10'000));
    }
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_TRUE(HasNoChild());
}

}  // namespace
}  // namespace korvane::view_link
