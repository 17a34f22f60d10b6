#include "scenarios/scenarios.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::test {
namespace {

using platform::Control;
using platform::Place;
namespace names = explorer_controls;
using enum Key;

constexpr const char* kIf = "IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))";

// ---- walking ----------------------------------------------------------------

void WalkByKeys(Stage& at) {
    at.Explore(u"A1");
    at.Expect("", "", "$A$1");
    at.Press(kDown);  // nothing was selected
    at.Expect("A1", "", "$A$1");
    EXPECT_EQ(at.world().Tinted(), "A1");
    at.Press(kDown);
    at.Expect("IF", kIf, "$A$1");
    at.Press({kRight, kRight});
    at.Expect("condition", "B1>1", "$A$1");
    at.Press({kRight, kDown});
    at.Expect("B1", "B1", "$B$1");
    EXPECT_EQ(at.world().Tinted(), "B1");
    at.Press(kLeft);
    at.Expect("condition", "B1>1", "$B$1");
    at.Press(kLeft);  // folds
    at.Press(kDown);
    at.Expect("if true (chosen)", "SUM(B1,C1)", "$B$1");
    at.Press(kExpandAll);
    at.Press({kDown, kDown, kDown});
    at.Expect("C1", "C1", "$C$1");
    at.Press(kEnd);
    at.Expect("Rate", "Rate", "$D$1");
    EXPECT_EQ(at.world().Tinted(), "D1");
    at.Press(kDown);  // there is no further row
    at.Expect("Rate", "Rate", "$D$1");
    at.Press(kHome);
    at.Expect("A1", "", "$A$1");
    at.Press(kLeft);
    EXPECT_EQ(VisibleRows(at.Front()).size(), 1U);
    at.Press(kRight);
    EXPECT_EQ(VisibleRows(at.Front()), (std::vector<std::int32_t>{1, 2, 3, 5, 6, 7, 8, 9, 12}));
    at.Press(kEnter);
}

void WalkByMouse(Stage& at) {
    at.Explore(u"A2");
    at.ClickRow(u"SUM");
    at.Expect("SUM", "SUM(B1,C1)", "$A$2");
    at.Press(kRight);
    at.ClickRow(u"C1");
    at.Expect("C1", "C1", "$C$1");
    at.ClickRow(u"B1");
    at.Expect("B1", "B1", "$B$1");
    EXPECT_EQ(at.world().Tinted(), "B1");
    at.ClickRow(u"A2");
    at.Expect("A2", "", "$A$2");
    at.ClickClose();
}

// Folding what holds the selected row selects the row that is folded.
void FoldOverTheSelection(Stage& at) {
    at.Explore(u"A1");
    at.Press({kDown, kExpandAll});
    at.ClickRow(u"OFFSET");
    at.Expect("OFFSET", "OFFSET(B1,0,1)", "$C$1");
    at.ClickArrow(u"IF");
    at.Expect("IF", kIf, "$C$1");
    EXPECT_EQ(VisibleRows(at.Front()), (std::vector<std::int32_t>{1, 2, 12}));
    at.ClickArrow(u"IF");  // what was open below is open again
    at.Expect("IF", kIf, "$C$1");
    EXPECT_EQ(VisibleRows(at.Front()).size(), 12U);
    at.ClickRow(u"Rate");
    at.ClickArrow(u"IF");  // the selected row is none of them
    at.Expect("Rate", "Rate", "$D$1");
    at.Press(kEscape);
}

// ---- the formula text ----------------------------------------------------------

void FindThePartAtTheCaret(Stage& at) {
    at.Explore(u"A1");
    at.PutCaret(17);  // within C1
    at.Expect("C1", "C1", "$C$1");
    EXPECT_TRUE(TreeOf(at.Front()).Expanded(6));
    EXPECT_EQ(PaneOf(at.Front()).Selection(), (platform::TextSpan{17, 0}));
    at.PutCaret(10);  // within the name of SUM
    at.Expect("if true (chosen)", "SUM(B1,C1)", "$C$1");
    at.PutCaret(30);  // an argument of OFFSET that is no part
    at.Expect("if false", "OFFSET(B1,0,1)", "$C$1");
    at.PutCaret(38);
    at.Expect("Rate", "Rate", "$D$1");
    at.PutCaret(0);
    at.Expect("A1", "", "$A$1");
    at.PutCaret(40);  // the end: the last part
    at.Expect("Rate", "Rate", "$D$1");
    at.Press(kEnter);
}

void WalkTheCaret(Stage& at) {
    at.Explore(u"A2");  // =SUM(B1,C1)*2
    at.PutCaret(5);
    at.Expect("B1", "B1", "$B$1");
    at.Press({kRight, kRight});
    at.Expect("B1", "B1", "$B$1");
    at.Press(kRight);
    at.Expect("C1", "C1", "$C$1");
    at.Press({kRight, kRight, kRight});
    at.Expect("SUM", "SUM(B1,C1)", "$C$1");
    at.Press({kLeft, kLeft});
    at.Expect("C1", "C1", "$C$1");
    at.Press(kEnter);
}

void SelectTextOfAPart(Stage& at) {
    at.Explore(u"A1");
    at.SelectText({13, 2});
    at.Expect("B1", "B1", "$B$1");
    EXPECT_EQ(PaneOf(at.Front()).Selection(), (platform::TextSpan{13, 2}));
    at.PutCaret(0);
    at.SelectText({13, 5});  // more than an argument; the caret was in the first one
    at.Expect("if true (chosen)", "SUM(B1,C1)", "$B$1");
    EXPECT_EQ(PaneOf(at.Front()).Selection(), (platform::TextSpan{13, 5}));
    at.PutCaret(0);
    at.SelectText({30, 8});  // more than any part: what was at its start stays
    at.Expect("if false", "OFFSET(B1,0,1)", "$C$1");
    EXPECT_EQ(PaneOf(at.Front()).Selection(), (platform::TextSpan{30, 8}));
    at.Close();
}

// ---- from one cell to the next ---------------------------------------------------

void ExploreOnFromAPart(Stage& at) {
    at.Explore(u"A2");
    at.Press(kExplore);  // no part is selected
    EXPECT_EQ(at.world().Count(), 1U);
    at.ClickRow(u"SUM");
    at.Press({kRight, kDown});
    at.Press(kExplore);
    ASSERT_EQ(at.world().Count(), 2U);
    EXPECT_EQ(ToUtf8(PaneOf(at.Front()).Text()), "=C1-1");
    at.Expect("", "", "$B$1");
    at.Press({kDown, kDown});
    at.Expect("C1", "C1", "$C$1");
    at.PutCaret(2);
    at.Press(kExplore);  // from the text
    ASSERT_EQ(at.world().Count(), 3U);
    EXPECT_EQ(ToUtf8(PaneOf(at.Front()).Text()), "3");
    at.Press(kEnter);
    at.Expect("C1", "C1", "$C$1");
    at.Press(kEnter);
    EXPECT_EQ(at.world().Focused(), at.Front().Handle());
    at.Expect("B1", "B1", "$C$1");
    at.Press(kDown);  // the opener goes on where it was left
    at.Expect("C1", "C1", "$C$1");
    at.Press(kEnter);
}

void GoBackToCellsExplored(Stage& at) {
    at.Explore(u"A1");
    at.Press(kEnter);
    at.Explore(u"A2");
    at.ClickRow(u"SUM");
    at.Press({kRight, kDown});
    at.Expect("B1", "B1", "$B$1");
    at.Press(kEnter);
    at.GoBack();
    EXPECT_EQ(at.world().Here(), "[B.xls]S!$A$2");
    at.GoBack();
    EXPECT_EQ(at.world().Here(), "[B.xls]S!$A$1");
    at.GoBack();  // there is nothing before that
    EXPECT_EQ(at.world().Here(), "[B.xls]S!$A$1");
}

void GoBackWhileAWindowIsOpen(Stage& at) {
    at.Explore(u"A1");
    at.ClickRow(u"Rate");
    at.Expect("Rate", "Rate", "$D$1");
    at.GoBack();
    at.Expect("Rate", "Rate", "$A$1");
    at.Press(kHome);
    at.Expect("A1", "", "$A$1");
    at.Press(kEnter);
}

// ---- modes -----------------------------------------------------------------------

void ShowReferencesOnly(Stage& at) {
    at.Explore(u"A1");
    EXPECT_TRUE(FunctionsOf(at.Front()).Checked());
    at.ClickRow(u"IF");
    at.ClickFunctions();
    at.Expect("", "", "$A$1");
    EXPECT_EQ(at.world().Setting(u"optLastMode"), "0");
    EXPECT_TRUE(TreeOf(at.Front()).HasFocus());
    const auto without = TreeOf(at.Front()).NodeCount();
    EXPECT_LT(without, 12);
    at.Press({kDown, kEnd});
    at.Expect("Rate", "Rate", "$D$1");
    at.Press(kEnter);
    // The next window begins as this one ended.
    at.Explore(u"A1");
    EXPECT_FALSE(FunctionsOf(at.Front()).Checked());
    EXPECT_EQ(TreeOf(at.Front()).NodeCount(), without);
    at.ClickFunctions();
    EXPECT_EQ(TreeOf(at.Front()).NodeCount(), 12);
    EXPECT_EQ(at.world().Setting(u"optLastMode"), "1");
    at.Press(kEnter);
}

void EvaluatePrecisely(Stage& at) {
    at.Explore(u"A1");
    ASSERT_TRUE(PreciseOf(at.Front()).Enabled());
    EXPECT_FALSE(PreciseOf(at.Front()).Checked());
    at.Press({kDown, kExpandAll});
    at.ClickRow(u"SUM");
    const auto rows = VisibleRows(at.Front());
    const auto value = [&at] {
        const auto& tree = TreeOf(at.Front());
        return ToUtf8(tree.Node(tree.SelectedNode()).subItems.at(1));
    };
    EXPECT_EQ(value(), "5");
    at.ClickPrecise();
    // The value in the cell, the same tree.
    EXPECT_EQ(value(), at.world().SumInItsCell());
    EXPECT_TRUE(PreciseOf(at.Front()).Checked());
    EXPECT_EQ(VisibleRows(at.Front()), rows);
    EXPECT_EQ(RowOf(at.Front()), "SUM");
    EXPECT_EQ(MarkedIn(at.Front()), "SUM(B1,C1)");
    EXPECT_TRUE(TreeOf(at.Front()).HasFocus());
    at.ClickFunctions();
    at.ClickFunctions();
    at.Press(kEnter);
}

void ReachEverythingByTab(Stage& at) {
    at.Explore(u"A1");
    const auto focus = [&at] {
        for (const auto& control : at.Front().Controls()) {
            if (control->HasFocus()) return control->Name();
        }
        return std::u16string();
    };
    for (const auto* name :
         {names::kFormula, names::kEveryFunction, names::kPrecise, names::kClose, names::kTree}) {
        at.Press(kTab);
        EXPECT_EQ(focus(), name);
    }
    at.Press({kTab, kTab, kSpace});  // the box explores anew, the tree has the focus
    EXPECT_FALSE(FunctionsOf(at.Front()).Checked());
    EXPECT_EQ(focus(), names::kTree);
    at.Press({kTab, kTab, kTab, kSpace});
    EXPECT_TRUE(PreciseOf(at.Front()).Checked());
    EXPECT_EQ(focus(), names::kTree);
    at.Press({kTab, kTab, kTab, kEnter});  // no button is pressed by Enter in a box
    EXPECT_EQ(at.world().Count(), 1U);
    at.Press({kTab, kEnter});
    EXPECT_EQ(at.world().Count(), 0U);
}

// ---- sizes -----------------------------------------------------------------------

const Place& PlaceOf(Stage& at, const char16_t* control) {
    return at.Front().Get<Control>(control).GetPlace();
}

// No gap and no overlap.
void ExpectWhole(Stage& at) {
    const Place& tree = PlaceOf(at, names::kTree);
    const Place& bar = PlaceOf(at, names::kSplitter);
    const Place& formula = PlaceOf(at, names::kFormula);
    const Place& button = PlaceOf(at, names::kClose);
    EXPECT_NEAR(tree.top + tree.height, bar.top, 1);
    EXPECT_NEAR(bar.top + bar.height, formula.top, 1);
    EXPECT_GT(tree.height, 0);
    EXPECT_GT(formula.height, 0);
    EXPECT_GT(button.top, formula.top + formula.height);
    EXPECT_LE(button.left + button.width, at.Front().Width());
}

void DragTheSplitter(Stage& at) {
    const double pixel = at.world().screen().TwipsPerPixelY();
    at.Explore(u"A1");
    const Place bar = PlaceOf(at, names::kSplitter);
    at.DragSplitter(40);
    EXPECT_NEAR(PlaceOf(at, names::kSplitter).top, bar.top + 40 * pixel, 2 * pixel);
    ExpectWhole(at);
    at.DragSplitter(-90);
    EXPECT_NEAR(PlaceOf(at, names::kSplitter).top, bar.top - 50 * pixel, 3 * pixel);
    ExpectWhole(at);
    at.ClickRow(u"Rate");  // all is where it is seen
    at.PutCaret(40);
    at.Expect("Rate", "Rate", "$D$1");
    const Place left = PlaceOf(at, names::kSplitter);
    at.Press(kEnter);
    at.Explore(u"A2");
    EXPECT_NEAR(PlaceOf(at, names::kSplitter).top, left.top, pixel);
    ExpectWhole(at);
    at.Press(kEnter);
}

void ResizeTheWindow(Stage& at) {
    const double pixel = at.world().screen().TwipsPerPixelX();
    const double line = at.world().screen().TwipsPerPixelY();
    at.Explore(u"A1");
    const Place before = at.Front().GetPlace();
    const Place tree = PlaceOf(at, names::kTree);
    const auto column = TreeOf(at.Front()).ColumnWidth(1);
    at.Resize(60, 45);
    EXPECT_NEAR(at.Front().Width(), before.width + 60 * pixel, pixel);
    EXPECT_NEAR(PlaceOf(at, names::kTree).width, tree.width + 60 * pixel, pixel);
    EXPECT_NEAR(PlaceOf(at, names::kTree).height, tree.height + 45 * line, 2 * line);
    EXPECT_NEAR(TreeOf(at.Front()).ColumnWidth(1), column + 60, 1);
    ExpectWhole(at);
    at.ClickRow(u"IF");
    at.PutCaret(37);
    at.Expect("Rate", "Rate", "$D$1");
    const Place left = at.Front().GetPlace();
    // Far too small: it snaps back.
    at.Resize(-1000, -1000);
    EXPECT_NEAR(at.Front().Width(), left.width, pixel);
    EXPECT_NEAR(at.Front().Height(), left.height, line);
    ExpectWhole(at);
    at.Press(kEnter);
    at.Explore(u"A1");
    EXPECT_NEAR(at.Front().Width(), left.width, pixel);
    EXPECT_NEAR(at.Front().Height(), left.height, line);
    EXPECT_NEAR(at.Front().Left(), left.left, pixel);
    EXPECT_NEAR(at.Front().Top(), left.top, line);
    at.Resize(-60, -45);
    EXPECT_NEAR(at.Front().Width(), before.width, 2 * pixel);
    EXPECT_NEAR(at.Front().Height(), before.height, 2 * line);
    ExpectWhole(at);
    at.Press(kEnter);
}

// ---- closing -----------------------------------------------------------------------

// A2, from it B1, and from that C1.
void OpenThree(Stage& at) {
    at.Explore(u"A2");
    at.ClickRow(u"SUM");
    at.Press({kRight, kDown, kExplore});
    at.Press({kDown, kDown, kExplore});
    at.Press(kDown);
    ASSERT_EQ(at.world().Count(), 3U);
    EXPECT_EQ(at.world().Tinted(), "B1 C1");
}

void CloseTheNewestFirst(Stage& at) {
    OpenThree(at);
    for (const std::size_t left : {2U, 1U}) {
        at.Press(kEnter);
        ASSERT_EQ(at.world().Count(), left);
        EXPECT_EQ(at.world().Focused(), at.world().Window(left).Handle());
    }
    EXPECT_EQ(at.world().Tinted(), "B1");
    at.Press(kEnter);
}

void CloseTheOldestFirst(Stage& at) {
    OpenThree(at);
    at.Look(1);
    at.Press(kEscape);
    ASSERT_EQ(at.world().Count(), 2U);
    EXPECT_EQ(at.world().Tinted(), "C1");
    at.Look(1);
    at.ClickClose();
    ASSERT_EQ(at.world().Count(), 1U);
    EXPECT_EQ(at.world().Tinted(), "C1");
    at.Press(kUp);
    at.Close();
}

// Two windows of one opener, which goes before them.
void CloseTheOpenerFirst(Stage& at) {
    at.Explore(u"A1");
    at.PutCaret(5);
    at.Press(kExplore);
    at.Press(kDown);
    at.Look(1);
    at.ClickRow(u"Rate");
    at.Press(kExplore);
    at.Press(kDown);
    ASSERT_EQ(at.world().Count(), 3U);
    EXPECT_EQ(at.world().Tinted(), "B1 D1");
    at.Look(1);
    at.Close();
    ASSERT_EQ(at.world().Count(), 2U);
    EXPECT_EQ(at.world().Tinted(), "B1 D1");
    at.Look(1);
    at.Press(kEnter);
    EXPECT_EQ(at.world().Tinted(), "D1");
    at.Press(kEnter);
}

void CloseTheMiddleOne(Stage& at) {
    OpenThree(at);
    at.Look(2);
    at.Close();
    ASSERT_EQ(at.world().Count(), 2U);
    EXPECT_EQ(at.world().Focused(), at.world().Window(1).Handle());
    EXPECT_EQ(at.world().Tinted(), "B1 C1");
    at.Look(2);
    at.Press(kEnter);  // its opener is gone: the host has the focus
    EXPECT_EQ(at.world().Tinted(), "B1");
    at.Press(kEnter);
}

// The same cell under three windows keeps its tint until the last one leaves it.
void ShareATint(Stage& at) {
    for (int k = 0; k < 3; ++k) {
        at.Explore(u"A3");
        at.Press({kDown, kDown});
        at.Expect("D1", "D1", "$D$1");
    }
    EXPECT_EQ(at.world().Tinted(), "D1");
    at.Look(2);
    at.Press(kUp);
    EXPECT_EQ(at.world().Tinted(), "A3 D1");
    at.Close();
    EXPECT_EQ(at.world().Tinted(), "D1");
    at.Look(1);
    at.Close();
    EXPECT_EQ(at.world().Tinted(), "D1");
    at.Close();
}

}  // namespace

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> kScenarios{
        {"WalkByKeys", WalkByKeys},
        {"WalkByMouse", WalkByMouse},
        {"FoldOverTheSelection", FoldOverTheSelection},
        {"FindThePartAtTheCaret", FindThePartAtTheCaret},
        {"WalkTheCaret", WalkTheCaret},
        {"SelectTextOfAPart", SelectTextOfAPart},
        {"ExploreOnFromAPart", ExploreOnFromAPart},
        {"GoBackToCellsExplored", GoBackToCellsExplored},
        {"GoBackWhileAWindowIsOpen", GoBackWhileAWindowIsOpen},
        {"ShowReferencesOnly", ShowReferencesOnly},
        {"EvaluatePrecisely", EvaluatePrecisely},
        {"ReachEverythingByTab", ReachEverythingByTab},
        {"DragTheSplitter", DragTheSplitter},
        {"ResizeTheWindow", ResizeTheWindow},
        {"CloseTheNewestFirst", CloseTheNewestFirst},
        {"CloseTheOldestFirst", CloseTheOldestFirst},
        {"CloseTheOpenerFirst", CloseTheOpenerFirst},
        {"CloseTheMiddleOne", CloseTheMiddleOne},
        {"ShareATint", ShareATint},
    };
    return kScenarios;
}

std::vector<std::string> Play(const Scenario& scenario, World& world, User& user) {
    Stage stage(world, user);
    scenario.play(stage);
    world.ExpectNothingLeft();
    world.ShutDown();
    EXPECT_EQ(world.LeftBehind(), "");
    return stage.story();
}

}  // namespace korvane::test
