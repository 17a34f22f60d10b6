// The link against views that are processes, most of which go wrong.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "base/error.h"
#include "bindings/view_link/linked_windows.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using std::chrono::milliseconds;
using test::LinkedWindows;
namespace names = korvane::test;

std::vector<std::string> Program(const char* mode) { return {KORVANE_VIEW_PROGRAM, mode}; }

std::size_t OpenDescriptors() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                      std::filesystem::directory_iterator()));
}

bool HasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

// How the first view of this manner is lost while a modal window is open.
struct Outcome {
    std::vector<Loss> losses;
    Clock::duration took{};
};
Outcome LoseWhileModal(const char* mode, const LinkLimits& limits) {
    LinkedWindows all(limits, Program(mode));
    const auto begin = Clock::now();
    try {
        all.form->ShowModal();
    } catch (const Error&) {
        // It was lost before there was anything to show.
    }
    EXPECT_FALSE(all.form->IsShown());
    EXPECT_FALSE(all.link.HasView());
    return {all.losses, Clock::now() - begin};
}

TEST(Programs, ViewsThatGoWrongAreGivenUp) {
    const std::pair<const char*, Loss> manners[] = {
        {"dies", Loss::kEnded},      {"half", Loss::kEnded},         {"foreign", Loss::kProtocol},
        {"garbage", Loss::kGarbage}, {"unreadable", Loss::kGarbage},
    };
    for (const auto& [mode, loss] : manners) {
        const Outcome outcome = LoseWhileModal(mode, test::LongLimits());
        EXPECT_EQ(outcome.losses, std::vector<Loss>{loss}) << mode;
        EXPECT_LT(outcome.took, milliseconds(5000)) << mode;
    }
    EXPECT_TRUE(HasNoChild());
}

TEST(Programs, ViewsThatStallAreGivenUpAfterAWhile) {
    for (const char* mode : {"stops", "deaf", "mute"}) {
        const Outcome outcome = LoseWhileModal(mode, test::ShortLimits());
        EXPECT_EQ(outcome.losses, std::vector<Loss>{Loss::kStalled}) << mode;
        EXPECT_GE(outcome.took, milliseconds(150)) << mode;
        EXPECT_LT(outcome.took, milliseconds(3000)) << mode;
    }
    EXPECT_TRUE(HasNoChild());
}

TEST(Programs, AFloodingViewIsHeardAndGivenUpWhenItDoesNotListen) {
    LinkLimits limits = test::ShortLimits();
    LinkedWindows all(limits, Program("floods"));
    ASSERT_TRUE(all.link.EnsureView());
    int edits = 0;
    EXPECT_TRUE(all.PumpUntil([&] {
        edits += all.Get<TextBox>(names::kBox).Text() == u"flood" ? 1 : 0;
        return !all.link.HasView();
    }));
    EXPECT_GT(edits, 0);
    EXPECT_EQ(all.losses, std::vector<Loss>{Loss::kStalled});
}

TEST(Programs, NoCallWaitsForAViewThatDoesNotListen) {
    for (const char* mode : {"deaf", "stops", "slow"}) {
        LinkedWindows all(test::LongLimits(), Program(mode));
        ASSERT_TRUE(all.link.EnsureView());
        auto& pane = all.Get<RichText>(names::kRich);
        Clock::duration longest{};
        for (int k = 0; k < 300; ++k) {
            const auto begin = Clock::now();
            pane.SetText(std::u16string(8000, static_cast<char16_t>(u'a' + k % 20)));
            all.link.OnReady();
            longest = std::max(longest, Clock::now() - begin);
        }
        RecordProperty(mode, std::to_string(longest.count() / 1000) + " us");
        EXPECT_LT(longest, milliseconds(1000)) << mode;
        EXPECT_TRUE(all.link.HasView()) << mode;
        if (std::string(mode) != "slow") continue;
        EXPECT_TRUE(all.PumpUntil([&] { return (all.link.events() & POLLOUT) == 0; }));
    }
    EXPECT_TRUE(HasNoChild());
}

TEST(Programs, ASlowViewIsNotGivenUpWhileItGoesOn) {
    LinkLimits limits = test::ShortLimits();
    limits.stallTime = milliseconds(400);
    LinkedWindows all(limits, Program("slow"));
    ASSERT_TRUE(all.link.EnsureView());
    auto& pane = all.Get<RichText>(names::kRich);
    // Several times longer to take than a view is waited for.
    for (int k = 0; k < 1500; ++k) {
        pane.SetText(std::u16string(16'000, static_cast<char16_t>(u'a' + k % 20)));
    }
    const auto begin = Clock::now();
    EXPECT_TRUE(
        all.PumpUntil([&] { return !all.link.HasView() || (all.link.events() & POLLOUT) == 0; },
                      std::chrono::seconds(60)));
    EXPECT_TRUE(all.link.HasView());
    EXPECT_GT(Clock::now() - begin, limits.stallTime);
}

TEST(Programs, ChangesArriveInOrderAndEventsComeBackInOrder) {
    LinkedWindows all(test::LongLimits(), Program("echoes"));
    ASSERT_TRUE(all.link.EnsureView());
    auto& label = all.Get<Label>(names::kLabel);
    auto& box = all.Get<TextBox>(names::kBox);
    std::vector<std::u16string> seen;
    std::u16string last;
    for (char16_t ch = u'a'; ch <= u'z'; ++ch) {
        label.SetCaption(std::u16string(2, ch));
    }
    EXPECT_TRUE(all.PumpUntil([&] {
        if (box.Text() != last) seen.push_back(last = box.Text());
        return last == u"zz";
    }));
    EXPECT_EQ(seen.size(), 26U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(Programs, QuestionsAreAnswered) {
    LinkedWindows all(test::LongLimits(), Program("answers"));
    for (int k = 0; k < 100; ++k) {
        EXPECT_EQ(all.boxes.Show({u"?", u"", MessageIcon::kQuestion, MessageButtons::kYesNo}),
                  MessageAnswer::kYes);
    }
    EXPECT_EQ(all.link.generation(), 1);
}

TEST(Programs, NothingButTheLinkIsInherited) {
    sigset_t mask;
    sigset_t before;
    ::sigemptyset(&mask);
    ::sigaddset(&mask, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &mask, &before);
    const auto pipeBefore = std::signal(SIGUSR2, SIG_IGN);
    const int open = ::dup(0);  // without close-on-exec
    LinkedWindows all(test::LongLimits(), Program("inherits"));
    EXPECT_TRUE(all.link.EnsureView());
    const auto& box = all.Get<TextBox>(names::kBox);
    EXPECT_TRUE(all.PumpUntil([&box] { return !box.Text().empty(); }));
    EXPECT_EQ(box.Text(), u"0123");
    ::close(open);
    std::signal(SIGUSR2, pipeBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(Programs, AKilledViewIsNoticedAtOnceAndReplaced) {
    const std::size_t before = OpenDescriptors();
    {
        LinkedWindows all(test::LongLimits(), Program("follows"));
        Clock::duration longest{};
        for (int k = 1; k <= 50; ++k) {
            ASSERT_TRUE(all.link.EnsureView());
            ASSERT_EQ(all.link.generation(), k);
            all.Get<Label>(names::kLabel).SetCaption(k % 2 == 0 ? u"even" : u"odd");
            all.link.Flush();
            ASSERT_EQ(::kill(all.link.viewProcess(), SIGKILL), 0);
            const auto begin = Clock::now();
            all.pump.RunUntil([] { return false; });
            longest = std::max(longest, Clock::now() - begin);
            ASSERT_EQ(all.losses.size(), static_cast<std::size_t>(k));
        }
        RecordProperty("longest", std::to_string(longest.count() / 1000) + " us");
        EXPECT_LT(longest, milliseconds(2000));
        ASSERT_TRUE(all.PumpUntil([&all] { return !all.link.NextTimeout(); }));
        EXPECT_TRUE(HasNoChild());
        EXPECT_EQ(all.losses, std::vector<Loss>(50, Loss::kEnded));
    }
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(Programs, ARestartShowsTheSameWindows) {
    // The program ends with an error when a change does not fit what it was told.
    LinkedWindows all(test::LongLimits(), Program("echoes"));
    auto& tree = all.Get<TreeView>(names::kTree);
    for (int k = 0; k < 5; ++k) {
        ASSERT_TRUE(all.link.EnsureView());
        for (int row = 0; row < 1000; ++row) tree.AddNode(0, u"k", u"row", {});
        const std::u16string mark = u"mark" + std::u16string(static_cast<std::size_t>(k), u'x');
        all.Get<Label>(names::kLabel).SetCaption(mark);
        ASSERT_TRUE(all.PumpUntil([&] { return all.Get<TextBox>(names::kBox).Text() == mark; }));
        all.link.Stop();
        EXPECT_TRUE(HasNoChild());
    }
    EXPECT_TRUE(all.losses.empty());
}

}  // namespace
}  // namespace korvane::view_link
