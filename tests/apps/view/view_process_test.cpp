#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>

#include "explorer_like.h"
#include "platform/window/random_messages.h"
#include "view_under_test.h"

namespace korvane::test {
namespace {

// The program's exit code; -1 when it runs on or died.
int ExitCode(ViewUnderTest& view) {
    const auto status = view.process().WaitForEnd(10s);
    return status && WIFEXITED(*status) ? WEXITSTATUS(*status) : -1;
}

bool IsIntroduced(ViewUnderTest& view) {
    return view.TakeUntil([&view] { return !view.metrics.empty(); });
}

TEST(ViewProcess, TellsItsVersion) {
    EXPECT_EQ(OutputOf(KORVANE_VIEW " --version").rfind("korvane-view ", 0), 0U);
}

TEST(ViewProcess, WithoutALinkItEnds) {
    Child process({KORVANE_VIEW}, {"QT_QPA_PLATFORM=offscreen"});
    const auto status = process.WaitForEnd(10s);
    ASSERT_TRUE(status);
    EXPECT_TRUE(WIFEXITED(*status));
}

TEST(ViewProcess, IntroducesItselfFirst) {
    ViewUnderTest view;
    ASSERT_TRUE(IsIntroduced(view));
    EXPECT_TRUE(view.events.empty());
    const auto& metrics = view.metrics.front();
    EXPECT_EQ(metrics.protocol, platform::kLinkProtocol);
    EXPECT_GT(metrics.twipsPerPixelX, 2);
    EXPECT_LE(metrics.twipsPerPixelX, 15);
    EXPECT_FALSE(metrics.monitors.empty());
}

TEST(ViewProcess, EndsWithItsLink) {
    ViewUnderTest view;
    ASSERT_TRUE(IsIntroduced(view));
    view.HangUp();
    EXPECT_EQ(ExitCode(view), 0);
}

TEST(ViewProcess, EndsWithItsLinkWhileAMessageIsOpen) {
    ViewUnderTest view;
    view.Send(platform::MessageAsked{1, u"Really?", u"Title", platform::MessageIcon::kQuestion,
                                     platform::MessageButtons::kYesNo});
    ASSERT_TRUE(view.Settle());
    view.HangUp();
    EXPECT_EQ(ExitCode(view), 0);
}

TEST(ViewProcess, EndsOnGarbage) {
    ViewUnderTest view;
    std::string bytes;
    platform::AppendFrame(bytes, "\xFF\xFF\xFF");
    view.SendBytes(bytes);
    EXPECT_EQ(ExitCode(view), 2);
}

TEST(ViewProcess, EndsOnAFrameThatIsTooLong) {
    ViewUnderTest view;
    view.SendBytes("\xFF\xFF\xFF\x7F");
    EXPECT_EQ(ExitCode(view), 2);
}

TEST(ViewProcess, TakesFramesInPieces) {
    ViewUnderTest view;
    std::string bytes;
    platform::AppendFrame(bytes, platform::Encode(platform::ToView(platform::Ping{300})));
    for (const char byte : bytes) {
        view.SendBytes(std::string(1, byte));
        view.TakeUntil([] { return false; }, 2ms);
    }
    EXPECT_TRUE(view.TakeUntil([&view] { return view.pongs == std::vector<std::int32_t>{300}; }));
}

TEST(ViewProcess, ShowsAWindowAndTellsOfIt) {
    ViewUnderTest view;
    ASSERT_TRUE(IsIntroduced(view));
    ExplorerLike explorer(view.windows);
    explorer.form->Show();
    ASSERT_TRUE(view.Settle());
    // The first control in the order of Tab has the focus.
    EXPECT_EQ(explorer.form->FocusedControl(), explorer.tree().Id());
    EXPECT_EQ(view.Told<platform::FormActivated>().size(), 1U);
    EXPECT_TRUE(view.Told<platform::NodeSelected>().empty());
    explorer.form->Hide();
    ASSERT_TRUE(view.Settle());
}

// Whatever well-formed messages say, the program lives and answers.
class ViewFuzz : public ::testing::TestWithParam<unsigned> {};

TEST_P(ViewFuzz, NoMessageHarmsIt) {
    SCOPED_TRACE(GetParam());
    ViewUnderTest view;
    RandomMessages random(GetParam());
    ExplorerLike explorer(view.windows);
    explorer.form->Show();
    for (int k = 0; k < 3000; ++k) {
        auto message = random.NextToView();
        if (std::holds_alternative<platform::Ping>(message)) continue;
        // Mostly about windows that are there.
        if (auto* change = std::get_if<platform::Change>(&message)) {
            std::visit(
                [&random](auto& what) {
                    if constexpr (requires { what.window; }) what.window = random.Below(3);
                    if constexpr (requires { what.control; }) what.control = random.Below(9);
                },
                *change);
        }
        view.Send(message);
        if (k % 500 == 0) {
            ASSERT_TRUE(view.Settle());
        }
    }
    EXPECT_TRUE(view.Settle());
    EXPECT_FALSE(view.process().WaitForEnd(0ms));
    view.HangUp();
    EXPECT_EQ(ExitCode(view), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ViewFuzz, ::testing::Range(1U, 4U));

}  // namespace
}  // namespace korvane::test
