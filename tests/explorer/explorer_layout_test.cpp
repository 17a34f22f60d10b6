#include "explorer/explorer_layout.h"

#include <random>

#include "base/number.h"
#include "explorer/explorer_fixture.h"

namespace korvane {
namespace {

using platform::Control;
using platform::Mouse;
using platform::MouseAction;
using platform::Place;
namespace names = explorer_controls;

class ExplorerLayout : public test::ExplorerFixture {
protected:
    const Place& At(const char16_t* name) { return form().Get<Control>(name).GetPlace(); }
    void Drag(std::int32_t button, float from, float to) {
        Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kDown, button, 0, 0, from});
        Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kMove, button, 0, 0, to});
        Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kUp, button, 0, 0, to});
    }
    std::int32_t Columns(std::int32_t column) { return tree().ColumnWidth(column); }
    // Nothing overlaps, and everything lies within the window.
    void ExpectWhole(const std::string& where) {
        const Place& treeAt = At(names::kTree);
        const Place& bar = At(names::kSplitter);
        const Place& formula = At(names::kFormula);
        EXPECT_EQ(treeAt.top + treeAt.height, bar.top) << where;
        EXPECT_EQ(bar.top + bar.height, formula.top) << where;
        EXPECT_GT(treeAt.height, 0) << where;
        EXPECT_GT(formula.height, 0) << where;
        EXPECT_GT(At(names::kClose).left, 0) << where;
        EXPECT_LE(At(names::kClose).left + At(names::kClose).width, form().Width()) << where;
        EXPECT_GT(At(names::kClose).top, formula.top + formula.height) << where;
        const Place& box = At(names::kTreeFrame);
        EXPECT_EQ(box,
                  (Place{treeAt.left - 15, treeAt.top - 15, treeAt.width + 30, treeAt.height + 30}))
            << where;
    }
};

TEST_F(ExplorerLayout, TheDesignIsWholeAndStaysSoAtEverySize) {
    main_.Explore();
    ExpectWhole("as designed");
    for (const auto& [width, height] : std::vector<std::pair<float, float>>{{9000, 6000},
                                                                            {12000, 5000},
                                                                            {8000, 9000},
                                                                            {6500, 4200},
                                                                            {6000, 3000},
                                                                            {500, 500},
                                                                            {20000, 15000},
                                                                            {5500, 2600},
                                                                            {8400, 5700}}) {
        Resize(width, height);
        ExpectWhole(std::to_string(width) + " x " + std::to_string(height));
    }
}

TEST_F(ExplorerLayout, ColumnsHaveTheirDefaultShares) {
    main_.Explore();
    const double pixels = At(names::kTree).width / 15;
    EXPECT_EQ(Columns(1), RoundToWhole(pixels * 0.5));
    EXPECT_EQ(Columns(2), RoundToWhole(pixels * 0.25));
    EXPECT_EQ(Columns(3), RoundToWhole(pixels * 0.22));
}

TEST_F(ExplorerLayout, StoredSharesAreCutAndPadded) {
    const float width = 8190;
    Setting(u"trvTree") = u".1;.2";
    main_.Explore();
    EXPECT_EQ(Columns(1), RoundToWhole(width / 15 * 0.1));
    EXPECT_EQ(Columns(3), 0);
    form().Unload();
    Setting(u"FExplorer").clear();
    Setting(u"trvTree") = u"0.1;x;1E-1;5;6";
    main_.Explore();
    EXPECT_EQ(Columns(2), 0);
    EXPECT_EQ(Columns(3), RoundToWhole(width / 15 * 0.1));
    form().Unload();
    Setting(u"trvTree") = u"-1;1E300;";
    main_.Explore();
    EXPECT_EQ(Columns(1), 0);
    EXPECT_GT(Columns(2), 1000);
    EXPECT_EQ(state_.lExplorerCount, 1);
}

TEST_F(ExplorerLayout, SharesAreStoredForEveryLocale) {
    Setting(u"trvTree") = u"0.5;0.25;0.25";
    main_.Explore();
    Deliver(names::kTree, platform::ColumnResized{0, 0, 1, 273});
    Deliver(names::kTree, platform::ColumnResized{0, 0, 2, 546});
    Deliver(names::kTree, platform::ColumnResized{0, 0, 3, 0});
    form().Unload();
    EXPECT_EQ(Setting(u"trvTree"), u".5;1;0");
}

TEST_F(ExplorerLayout, AReopenedWindowHasTheSameColumnsAndSplit) {
    main_.Explore();
    Deliver(names::kTree, platform::ColumnResized{0, 0, 2, 111});
    Drag(1, 0, 1500);
    Resize(9000, 6500);
    const std::int32_t first = Columns(1);
    const Place splitter = At(names::kSplitter);
    const Place formula = At(names::kFormula);
    form().Unload();
    main_.Explore();
    EXPECT_EQ(Columns(1), first);
    EXPECT_EQ(Columns(2), 111);
    EXPECT_EQ(At(names::kSplitter), splitter);
    EXPECT_EQ(At(names::kFormula), formula);
    ExpectWhole("opened again");
}

TEST_F(ExplorerLayout, AStoredSplitOfNothingKeepsTheDesign) {
    main_.Explore();
    const Place designed = At(names::kSplitter);
    for (const auto* stored : {u"0", u"-100", u"", u"rubbish", u"1E300", u"99999999", u"10"}) {
        form().Unload();
        Setting(u"FExplorer").clear();
        Setting(u"lblSplitterBar") = stored;
        main_.Explore();
        EXPECT_EQ(At(names::kSplitter), designed) << ToUtf8(stored);
    }
}

TEST_F(ExplorerLayout, AStoredSplitMovesBothSides) {
    Setting(u"lblSplitterBar") = u"3000";
    main_.Explore();
    EXPECT_EQ(At(names::kSplitter).top, 3000);
    EXPECT_EQ(At(names::kTree).height, 3000 - At(names::kTree).top);
    ExpectWhole("split");
}

TEST_F(ExplorerLayout, OnlyTheFirstColumnFollowsTheWindow) {
    main_.Explore();
    const auto first = Columns(1);
    const auto second = Columns(2);
    const auto third = Columns(3);
    Resize(form().Width() + 1500, form().Height());
    EXPECT_EQ(Columns(1), first + 100);
    EXPECT_EQ(Columns(2), second);
    EXPECT_EQ(Columns(3), third);
    Resize(form().Width() - 3000, form().Height());
    EXPECT_EQ(Columns(1), first - 100);
}

TEST_F(ExplorerLayout, TheFirstColumnKeepsALittle) {
    main_.Explore();
    Deliver(names::kTree, platform::ColumnResized{0, 0, 1, 10});
    Resize(form().Width() - 1500, form().Height());
    EXPECT_EQ(Columns(1), 3);  // 50 twips
}

// A step is accepted by where the button stood before it.
TEST_F(ExplorerLayout, TheCloseButtonStopsOnceItReachesTheOptions) {
    main_.Explore();
    for (float width = form().Width(); width > 100; width -= 100) {
        Resize(width, form().Height());
        ExpectWhole(std::to_string(width));
    }
    const float right = precise().Left() + precise().Width() + 50;
    EXPECT_LT(At(names::kClose).left, right);
    EXPECT_GE(At(names::kClose).left, right - 100);
    const float limit = form().Width();
    Resize(limit - 1, form().Height());
    EXPECT_EQ(form().Width(), limit);
    Resize(limit + 10, form().Height());
    EXPECT_EQ(form().Width(), limit + 10);
}

TEST_F(ExplorerLayout, OneJumpIsAcceptedAndTheNextIsNot) {
    main_.Explore();
    const float narrow = form().Width() - 4000;
    Resize(narrow, form().Height());
    EXPECT_EQ(form().Width(), narrow);
    Resize(narrow - 1, form().Height());
    EXPECT_EQ(form().Width(), narrow);
}

TEST_F(ExplorerLayout, TinySizesLeaveNothingNegative) {
    main_.Explore();
    std::mt19937 random(20261116);
    std::uniform_real_distribution<float> size(0.5F, 3000);
    for (int k = 0; k < 2000; ++k) {
        Resize(size(random), size(random));
        if (k % 7 == 0) Resize(9000, 6000);
        for (const auto& control : form().Controls()) {
            const Place& place = control->GetPlace();
            ASSERT_GT(place.width, 0) << k;
            ASSERT_GT(place.height, 0) << k;
            ASSERT_GT(place.left, 0) << k;
            ASSERT_GT(place.top, 0) << k;
        }
        ASSERT_GT(Columns(1), 0);
    }
}

TEST_F(ExplorerLayout, WithoutThePreciseBoxItMayBeNarrower) {
    state_.options->SetbPreciseCalc(true);
    main_.Explore();
    for (float width = form().Width(); width > 100; width -= 100) {
        Resize(width, form().Height());
    }
    const float right = functions().Left() + functions().Width() + 50;
    EXPECT_LT(At(names::kClose).left, right);
    EXPECT_GE(At(names::kClose).left, right - 100);
}

TEST_F(ExplorerLayout, ATooLowWindowSnapsBack) {
    main_.Explore();
    for (float height = form().Height(); height > 100; height -= 100) {
        Resize(form().Width(), height);
        ExpectWhole(std::to_string(height));
    }
    EXPECT_EQ(At(names::kTree).height, 50);
    const float limit = form().Height();
    Resize(form().Width(), limit - 1);  // 50 is not too little yet
    EXPECT_EQ(form().Height(), limit - 1);
    Resize(form().Width(), limit - 2);
    EXPECT_EQ(form().Height(), limit - 1);
    EXPECT_EQ(At(names::kTree).height, 49);
}

TEST_F(ExplorerLayout, TheSplitterFollowsThePointerInSteps) {
    main_.Explore();
    const Place treeAt = At(names::kTree);
    const Place formula = At(names::kFormula);
    Drag(1, 10, 160);  // 150 twips of the pointer are a step of 10
    EXPECT_EQ(At(names::kTree).height, treeAt.height + 10);
    EXPECT_EQ(At(names::kFormula),
              (Place{formula.left, formula.top + 10, formula.width, formula.height - 10}));
    ExpectWhole("dragged");
}

TEST_F(ExplorerLayout, TheSplitterStopsBeforeEitherSideIsGone) {
    main_.Explore();
    const Place before = At(names::kTree);
    Drag(1, 0, -15 * (before.height - 20));
    EXPECT_EQ(At(names::kTree), before);
    Drag(1, 0, -15 * (before.height - 21));
    EXPECT_EQ(At(names::kTree).height, 21);
    const float formula = At(names::kFormula).height;
    Drag(1, 0, 15 * (formula - 20));
    EXPECT_EQ(At(names::kFormula).height, formula);
    Drag(1, 0, 15 * (formula - 21));
    EXPECT_EQ(At(names::kFormula).height, 21);
}

TEST_F(ExplorerLayout, OtherButtonsAndPlainMovesDoNotDrag) {
    main_.Explore();
    const Place before = At(names::kSplitter);
    Drag(2, 0, 500);
    Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kMove, 0, 0, 0, 500});
    EXPECT_EQ(At(names::kSplitter), before);
    // A right button that is let go of does not end a drag of the left one.
    Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kDown, 1, 0, 0, 0});
    Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kUp, 2, 0, 0, 0});
    Deliver(names::kSplitter, Mouse{0, 0, MouseAction::kMove, 1, 0, 0, 150});
    EXPECT_EQ(At(names::kSplitter).top, before.top + 10);
}

TEST_F(ExplorerLayout, ALayoutThatCannotBeStoredIsNoFailure) {
    main_.Explore();
    accesses().FailMember("SettingsStore.Save");
    Resize(9000, 6000);
    Resize(9100, 6000);
    form().Unload();
    EXPECT_TRUE(Boxes().empty());
    // The maker hears of it, once for each window.
    ASSERT_EQ(Log().size(), 2U);
    EXPECT_NE(Log()[0].find("]FExplorer.SaveLayout, Error 1004: SettingsStore.Save failed "
                            "(SaveLayout)"),
              std::string::npos)
        << Log()[0];
    EXPECT_EQ(Log()[1], "");
    EXPECT_EQ(state_.errors.number(), 0);
}

TEST_F(ExplorerLayout, TheSplitIsStoredInSinglePrecision) {
    main_.Explore();
    Drag(1, 0, 1.6F);  // a step of 0.10666667 twips
    form().Unload();
    EXPECT_EQ(Setting(u"lblSplitterBar"), u"3855.107");
}

TEST_F(ExplorerLayout, AFirstWindowLiesWithinTheWorkArea) {
    platform_.screen.monitors = {{{0, 0, 640, 400}, {0, 20, 640, 380}}};
    main_.Explore();
    EXPECT_EQ(form().GetPlace(), (Place{1200, 300, 8400, 5400}));
    ExpectWhole("on a small monitor");
    form().Unload();
    // Where the user left it, it stays.
    Setting(u"FExplorer") = u"600;3000;5000;6000";
    main_.Explore();
    EXPECT_EQ(form().GetPlace(), (Place{3000, 600, 6000, 5000}));
}

}  // namespace
}  // namespace korvane
