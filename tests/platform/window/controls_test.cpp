#include "platform/window/controls.h"

#include <gtest/gtest.h>

#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

using test::TestWindows;

TEST(Control, AWriteIsReadBackAndMovesTheRestAlong) {
    TestWindows test;
    Control& control = test.Get<Control>(test::kButton);
    control.SetLeft(10);
    control.SetTop(20);
    control.SetWidth(30);
    control.SetHeight(40);
    EXPECT_EQ(control.GetPlace(), (Place{10, 20, 30, 40}));
    control.SetCaption(u"Close");
    EXPECT_EQ(control.Caption(), u"Close");
    control.SetForeColour(Rgb(255, 0, 0));
    EXPECT_EQ(control.ForeColour(), 255);
}

TEST(Control, AHiddenOrDisabledOneHearsNothing) {
    TestWindows test;
    Button& button = test.Get<Button>(test::kButton);
    int clicks = 0;
    button.onClick = [&clicks] { ++clicks; };
    test.Deliver(test::kButton, Clicked());
    EXPECT_EQ(clicks, 1);
    button.SetEnabled(false);
    test.Deliver(test::kButton, Clicked());
    button.SetEnabled(true);
    button.SetVisible(false);
    test.Deliver(test::kButton, Clicked());
    EXPECT_EQ(clicks, 1);
}

TEST(Control, KeysReachTheirControlWithTheirShiftState) {
    TestWindows test;
    std::vector<std::pair<int, int>> keys;
    test.Get<Control>(test::kTree).onKeyDown = [&keys](std::int32_t code, std::int32_t shift) {
        keys.emplace_back(code, shift);
    };
    test.Deliver(test::kTree, KeyDown{0, 0, kKeyEnter, 0});
    test.Deliver(test::kTree, KeyDown{0, 0, 'Q', kCtrl | kShift});
    test.Deliver(test::kRich, KeyDown{0, 0, 'Q', kCtrl});
    EXPECT_EQ(keys, (std::vector<std::pair<int, int>>{{13, 0}, {'Q', 3}}));
}

TEST(Control, TheFocusFollowsTheUserAndTheSystem) {
    TestWindows test;
    test.Deliver(test::kBox, ControlFocused());
    EXPECT_TRUE(test.Get<Control>(test::kBox).HasFocus());
    test.Get<Control>(test::kTree).SetFocus();
    EXPECT_TRUE(test.Get<Control>(test::kTree).HasFocus());
    EXPECT_FALSE(test.Get<Control>(test::kBox).HasFocus());
}

TEST(CheckBox, RaisesAClickPerChangeWhoeverMadeIt) {
    TestWindows test;
    CheckBox& box = test.Get<CheckBox>(test::kCheck);
    std::vector<bool> seen;
    box.onClick = [&] { seen.push_back(box.Checked()); };
    test.Deliver(test::kCheck, Toggled{0, 0, true});
    test.Deliver(test::kCheck, Toggled{0, 0, true});  // a view that lags behind
    box.SetChecked(false);
    box.SetChecked(false);
    EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

TEST(TextBox, TypingAndWritingRaiseAChange) {
    TestWindows test;
    TextBox& box = test.Get<TextBox>(test::kBox);
    std::vector<std::u16string> seen;
    box.onChange = [&] { seen.push_back(box.Text()); };
    test.Deliver(test::kBox, TextEdited{0, 0, u"q"});
    box.SetText(u"w");
    box.SetText(u"w");
    EXPECT_EQ(seen, (std::vector<std::u16string>{u"q", u"w"}));
}

TEST(TextBox, AReadOnlyOneKeepsItsTextAndLetsItBeSelected) {
    test::NoModalLoop loop;
    Windows windows(loop);
    FormDesign design = test::EveryControl();
    design.controls[4].readOnly = true;
    const auto form = windows.Load(design);
    form->Show();
    TextBox& box = form->Get<TextBox>(test::kBox);
    box.SetText(u"mail");
    windows.Deliver(TextEdited{form->Id(), box.Id(), u"x"});
    EXPECT_EQ(box.Text(), u"mail");
    windows.Deliver(TextSelected{form->Id(), box.Id(), {1, 2}});
    EXPECT_EQ(box.Selection(), (TextSpan{1, 2}));
    box.SetSelection({0, 99});
    EXPECT_EQ(box.Selection(), (TextSpan{0, 4}));
}

TEST(TextBox, HearsClicksAndMovesAndChangesItsLook) {
    TestWindows test;
    TextBox& box = test.Get<TextBox>(test::kBox);
    int clicks = 0;
    int moves = 0;
    box.onClick = [&clicks] { ++clicks; };
    box.onMouseMove = [&moves] { ++moves; };
    test.Deliver(test::kBox, Clicked());
    test.Deliver(test::kBox, Mouse{0, 0, MouseAction::kMove, 0, 0, 5, 5});
    test.Deliver(test::kBox, Mouse{0, 0, MouseAction::kDown, 1, 0, 5, 5});
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(moves, 1);
    box.SetPointer(Pointer::kHand);
    EXPECT_EQ(box.Pointer(), Pointer::kHand);
    EXPECT_EQ(box.BackColour(), kDesktopColour);
    box.SetBackColour(Rgb(255, 255, 0));
    EXPECT_EQ(box.BackColour(), 0xFFFF);
}

TEST(ComboBox, AChoiceIsAClickAlsoWhenItIsTheSame) {
    TestWindows test;
    ComboBox& combo = test.Get<ComboBox>(test::kCombo);
    EXPECT_EQ(combo.ListIndex(), -1);
    std::vector<int> seen;
    combo.onClick = [&] { seen.push_back(combo.ListIndex()); };
    test.Deliver(test::kCombo, ItemChosen{0, 0, 1});
    test.Deliver(test::kCombo, ItemChosen{0, 0, 1});
    test.Deliver(test::kCombo, ItemChosen{0, 0, 2});
    test.Deliver(test::kCombo, ItemChosen{0, 0, -1});
    combo.SetListIndex(0);
    combo.SetListIndex(7);
    EXPECT_EQ(seen, (std::vector<int>{1, 1, 0, -1}));
}

TEST(Splitter, HearsOfEveryButtonWithItsPlace) {
    TestWindows test;
    Splitter& splitter = test.Get<Splitter>(test::kSplitter);
    std::vector<std::string> seen;
    const auto note = [&seen](const char* what) {
        return [&seen, what](std::int32_t button, std::int32_t shift, float x, float y) {
            seen.push_back(std::string(what) + " " + std::to_string(button) + " " +
                           std::to_string(shift) + " " + std::to_string(static_cast<int>(x)) + " " +
                           std::to_string(static_cast<int>(y)));
        };
    };
    splitter.onMouseDown = note("down");
    splitter.onMouseMove = note("move");
    splitter.onMouseUp = note("up");
    test.Deliver(test::kSplitter, Mouse{0, 0, MouseAction::kDown, 2, 1, 3, 4});
    test.Deliver(test::kSplitter, Mouse{0, 0, MouseAction::kMove, 2, 0, 5, -6});
    test.Deliver(test::kSplitter, Mouse{0, 0, MouseAction::kUp, 2, 0, 5, -6});
    EXPECT_EQ(seen, (std::vector<std::string>{"down 2 1 3 4", "move 2 0 5 -6", "up 2 0 5 -6"}));
}

TEST(Label, CanBeClicked) {
    TestWindows test;
    int clicks = 0;
    test.Get<Label>(test::kLabel).onClick = [&clicks] { ++clicks; };
    test.Deliver(test::kLabel, Clicked());
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace korvane::platform
