#include "platform/window/rich_text.h"

#include <gtest/gtest.h>

#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

using test::TestWindows;

TEST(RichText, MarksTheSelectedCharacters) {
    TestWindows test;
    RichText& pane = test.Get<RichText>(test::kRich);  // =A1+B1
    pane.SetSelStart(1);
    pane.SetSelLength(2);
    pane.SetSelBold(true);
    pane.SetSelColour(Rgb(0, 0, 255));
    pane.SetSelStart(2);
    pane.SetSelLength(2);
    pane.SetSelUnderline(true);
    EXPECT_EQ(pane.LookAt(0), TextLook());
    EXPECT_EQ(pane.LookAt(1), (TextLook{true, false, Rgb(0, 0, 255)}));
    EXPECT_EQ(pane.LookAt(2), (TextLook{true, true, Rgb(0, 0, 255)}));
    EXPECT_EQ(pane.LookAt(3), (TextLook{false, true, 0}));
    EXPECT_EQ(pane.LookAt(4), TextLook());
    EXPECT_EQ(pane.LookAt(6), TextLook());
    EXPECT_EQ(pane.LookAt(-1), TextLook());
}

TEST(RichText, ANewTextDropsTheMarking) {
    TestWindows test;
    RichText& pane = test.Get<RichText>(test::kRich);
    pane.SetSelection({0, 6});
    pane.SetSelBold(true);
    pane.SetText(pane.Text());
    EXPECT_EQ(pane.LookAt(0), TextLook());
    EXPECT_EQ(pane.Selection(), TextSpan());
    pane.SetText(u"");
    pane.SetSelBold(true);
    EXPECT_TRUE(pane.Runs().empty());
}

TEST(RichText, TellsOfEveryOtherSelectionAndOfEveryClick) {
    TestWindows test;
    RichText& pane = test.Get<RichText>(test::kRich);
    std::vector<TextSpan> seen;
    pane.onSelChange = [&] { seen.push_back(pane.Selection()); };
    test.Deliver(test::kRich, TextSelected{0, 0, {0, 0}});  // a click on the caret itself
    test.Deliver(test::kRich, TextSelected{0, 0, {3, 0}});
    test.Deliver(test::kRich, TextSelected{0, 0, {3, 0}});
    pane.SetSelLength(2);
    pane.SetSelStart(3);
    pane.SetSelStart(3);  // the code's own writes tell of changes alone
    pane.SetSelStart(99);
    pane.SetText(u"=1");
    EXPECT_EQ(seen,
              (std::vector<TextSpan>{{0, 0}, {3, 0}, {3, 0}, {3, 2}, {3, 0}, {6, 0}, {0, 0}}));
}

TEST(RichText, AViewsOddSelectionIsCutToTheText) {
    TestWindows test;
    RichText& pane = test.Get<RichText>(test::kRich);
    test.Deliver(test::kRich, TextSelected{0, 0, {-3, 2'000'000'000}});
    EXPECT_EQ(pane.Selection(), (TextSpan{0, 6}));
    test.Deliver(test::kRich, TextSelected{0, 0, {2'000'000'000, -5}});
    EXPECT_EQ(pane.Selection(), (TextSpan{6, 0}));
}

}  // namespace
}  // namespace korvane::platform
