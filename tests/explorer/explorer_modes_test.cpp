// Keys and check boxes.
#include "explorer/explorer_fixture.h"

namespace korvane {
namespace {

using platform::kAlt;
using platform::kCtrl;
using platform::kKeyEnter;
using platform::kShift;
using platform::Toggled;
namespace names = explorer_controls;

class ExplorerModes : public test::ExplorerFixture {
protected:
    std::size_t Windows() { return platform_.windows.forms().size(); }
    void ToggleFunctions() {
        Deliver(names::kEveryFunction, Toggled{0, 0, !functions().Checked()});
    }
    void TogglePrecise() { Deliver(names::kPrecise, Toggled{0, 0, !precise().Checked()}); }
};

TEST_F(ExplorerModes, EnterAloneClosesFromTreeAndText) {
    for (const auto* control : {names::kTree, names::kFormula}) {
        main_.Explore();
        for (const int shift : {kShift, kCtrl, kAlt, kCtrl | kShift}) {
            Key(control, kKeyEnter, shift);
            EXPECT_EQ(Windows(), 1U);
        }
        Key(control, kKeyEnter, 0);
        EXPECT_EQ(Windows(), 0U);
    }
}

TEST_F(ExplorerModes, EnterInTheCheckBoxesDoesNotClose) {
    main_.Explore();
    Key(names::kEveryFunction, kKeyEnter, 0);
    EXPECT_EQ(Windows(), 1U);
}

TEST_F(ExplorerModes, TheCloseButtonCloses) {
    main_.Explore();
    Deliver(names::kClose, platform::Clicked());
    EXPECT_EQ(Windows(), 0U);
}

TEST_F(ExplorerModes, TheShortcutExploresThePartFromEveryControl) {
    std::size_t windows = 1;
    main_.Explore();
    platform::Form& first = form();
    for (const auto* control :
         {names::kTree, names::kFormula, names::kEveryFunction, names::kPrecise, names::kClose}) {
        if (control == names::kPrecise) precise().SetEnabled(true);
        first.Get<platform::TreeView>(names::kTree).SelectNode(1);
        first.Get<platform::TreeView>(names::kTree).SelectNode(2);
        platform_.windows.Deliver(
            platform::KeyDown{first.Id(), first.Get<platform::Control>(control).Id(), 'Q', kCtrl});
        EXPECT_EQ(Windows(), ++windows) << ToUtf8(control);
        // It explores the active cell, and is owned by the host.
        EXPECT_EQ(form().Owner(), 7);
    }
    EXPECT_EQ(state_.history->count(), 1U);
}

TEST_F(ExplorerModes, TheShortcutDoesNothingOnTheRootOrWithoutARow) {
    main_.Explore();
    Key(names::kTree, 'Q', kCtrl);
    Select(1);
    Key(names::kTree, 'Q', kCtrl);
    EXPECT_EQ(Windows(), 1U);
}

TEST_F(ExplorerModes, OtherKeysAndOtherShiftStatesAreIgnored) {
    main_.Explore();
    Select(2);
    Key(names::kTree, 'Q', 0);
    Key(names::kTree, 'Q', kShift);
    Key(names::kTree, 'Q', kCtrl | kShift);
    Key(names::kTree, 'Q', kAlt);  // the way back is not handled here
    Key(names::kTree, platform::kKeyCtrl, kCtrl);
    Key(names::kTree, platform::kKeyAlt, kAlt);
    EXPECT_EQ(Windows(), 1U);
}

TEST_F(ExplorerModes, TheModeIsRememberedForTheNextWindow) {
    main_.Explore();
    EXPECT_TRUE(functions().Checked());
    ToggleFunctions();
    EXPECT_EQ(state_.options->enLastMode(), 0);
    EXPECT_EQ(Setting(u"optLastMode"), u"0");
    main_.Explore();
    EXPECT_FALSE(functions().Checked());
    ToggleFunctions();
    EXPECT_EQ(state_.options->enLastMode(), 1);
}

TEST_F(ExplorerModes, AStoredModeOf2MeansWithoutFunctions) {
    state_.options->SetenLastMode(2);
    main_.Explore();
    EXPECT_FALSE(functions().Checked());
    EXPECT_EQ(state_.options->enLastMode(), 2);
}

TEST_F(ExplorerModes, FunctionsOffAndOnAgainGivesTheSameTreeCollapsed) {
    main_.Explore();
    const std::string before = TreeText();
    tree().SetExpanded(2, true);
    ToggleFunctions();
    EXPECT_NE(TreeText(), before);
    ToggleFunctions();
    EXPECT_EQ(TreeText(), before);
    EXPECT_TRUE(tree().Expanded(1));
    EXPECT_FALSE(tree().Expanded(2));
    EXPECT_EQ(Here(), "[B.xls]S!$A$1");
    EXPECT_EQ(Tint(u"A1"), 33);
    EXPECT_TRUE(tree().HasFocus());
}

TEST_F(ExplorerModes, PrecisionKeepsTheLookOfTheTree) {
    main_.Explore();
    ASSERT_TRUE(precise().Enabled());
    const auto last = tree().NodeCount();
    tree().SetExpanded(2, true);
    Select(last);
    tree().SetScrollPosition(60);
    const std::u16string key = tree().SelectedKey();
    TogglePrecise();
    EXPECT_TRUE(tree().Expanded(2));
    EXPECT_EQ(tree().SelectedKey(), key);
    EXPECT_EQ(tree().ScrollPosition(), 60);
    EXPECT_NE(Marked(), "");
    EXPECT_TRUE(host_->model().screenUpdating);
    EXPECT_TRUE(tree().HasFocus());
}

TEST_F(ExplorerModes, PrecisionIsNotAStoredSetting) {
    main_.Explore();
    platform_.settings.writes.clear();
    TogglePrecise();
    for (const auto& write : platform_.settings.writes) {
        EXPECT_NE(write.name.key, u"optPreciseCalc");
    }
}

TEST_F(ExplorerModes, ScreenUpdatingIsOnAfterwardsAlsoWhenItFails) {
    main_.Explore();
    for (const bool fails : {false, true}) {
        host_->model().screenUpdating = false;
        if (fails) accesses().FailMember("Range.Formula");
        TogglePrecise();
        accesses().FailNothing();
        EXPECT_TRUE(host_->model().screenUpdating);
    }
    EXPECT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Log().at(2).find("]FExplorer.cmdPrecise_Click, Error 1004: "), std::string::npos);
    EXPECT_EQ(Windows(), 1U);
}

TEST_F(ExplorerModes, AFailedChangeOfModeLeavesTheWindowUsable) {
    main_.Explore();
    const std::string before = TreeText();
    accesses().FailMember("Range.Formula");
    ToggleFunctions();
    accesses().FailNothing();
    EXPECT_NE(Log().at(2).find("]FExplorer.chkEveryFunction_Click, Error 1004: "),
              std::string::npos);
    EXPECT_EQ(state_.options->enLastMode(), 1);
    ToggleFunctions();
    EXPECT_EQ(TreeText(), before);
}

TEST_F(ExplorerModes, AFailedExplorationGivesTheFocusBackToTheHost) {
    platform::WindowsMirror view;
    platform_.windows.Attach(view);
    accesses().FailMember("Range.Formula");
    main_.Explore();
    accesses().FailNothing();
    EXPECT_EQ(view.focused(), 7);
    // And back to the window from which it was tried.
    main_.Explore();
    const std::int64_t opener = form().Handle();
    Select(2);
    accesses().FailMember("Range.Formula");
    Key(names::kTree, 'Q', kCtrl);
    accesses().FailNothing();
    EXPECT_EQ(Windows(), 1U);
    EXPECT_EQ(view.focused(), opener);
    platform_.windows.Detach(view);
}

TEST_F(ExplorerModes, TheShortcutOnAPartWithoutCellsExploresTheActiveCell) {
    main_.Explore();
    GoTo(u"B1");
    Select(3);  // the condition: it has no range
    ASSERT_EQ(tree().Node(3).subItems.at(0), u"");
    Key(names::kTree, 'Q', kCtrl);
    ASSERT_EQ(Windows(), 2U);
    EXPECT_EQ(pane().Text(), u"=C1-1");
}

TEST_F(ExplorerModes, AnotherNumberOfRowsRestoresNothing) {
    main_.Explore();
    tree().SetExpanded(2, true);
    Select(tree().NodeCount());
    tree().SetScrollPosition(60);
    host_->model().activeSheet->At(1, 1).content.formula = u"=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))";
    TogglePrecise();
    EXPECT_TRUE(tree().Expanded(1));
    for (std::int32_t node = 2; node <= tree().NodeCount(); ++node) {
        EXPECT_FALSE(tree().Expanded(node)) << node;
    }
    EXPECT_EQ(tree().SelectedNode(), 0);
    EXPECT_EQ(tree().ScrollPosition(), 0);
}

TEST_F(ExplorerModes, WithPrecisionInTheSettingsTheBoxIsCheckedAndHidden) {
    state_.options->SetbPreciseCalc(true);
    main_.Explore();
    EXPECT_FALSE(precise().Visible());
}

TEST_F(ExplorerModes, IndirectReferencesThatMayBeImpreciseAreRed) {
    main_.Explore();
    // OFFSET, and no INDIRECT: maybe imprecise, but not red.
    EXPECT_FALSE(precise().Checked());
    EXPECT_EQ(precise().ForeColour(), 0);
    host_->model().activeSheet->At(1, 1).content.formula = u"=INDIRECT(\"B1\")+SUM(B1,C1)";
    host_->model().evaluate[u"=INDIRECT(\"B1\")"] = {scripted::Answer::Kind::kRange, {}, u"S!B1"};
    GoTo(u"A1");
    main_.Explore();
    EXPECT_FALSE(precise().Checked());
    EXPECT_EQ(precise().ForeColour(), platform::Rgb(255, 0, 0));
}

}  // namespace
}  // namespace korvane
