// Marking the selected part in the formula, and finding the part at the caret.
#include "explorer/explorer_fixture.h"

namespace korvane {
namespace {

using platform::Rgb;
using platform::TextSelected;
namespace names = explorer_controls;

class ExplorerPane : public test::ExplorerFixture {
protected:
    ExplorerPane() { main_.Explore(); }
    void Caret(std::int32_t start, std::int32_t length = 0) {
        Deliver(names::kFormula, TextSelected{0, 0, {start, length}});
    }
    std::string Selected() { return ToUtf8(tree().Node(tree().SelectedNode()).text); }
    std::int32_t NodeOf(const char16_t* text) {
        for (std::int32_t k = 1; k <= tree().NodeCount(); ++k) {
            if (tree().Node(k).text == text) return k;
        }
        return 0;
    }
    std::int32_t PlaceOf(const char16_t* text) {
        return static_cast<std::int32_t>(pane().Text().find(text));
    }
};

TEST_F(ExplorerPane, TheSelectedPartIsMarkedAndItsCellsAreTinted) {
    Select(NodeOf(u"SUM"));
    EXPECT_EQ(Marked(), "SUM(B1,C1)");
    Select(NodeOf(u"B1"));
    EXPECT_EQ(Marked(), "B1");
    EXPECT_EQ(pane().LookAt(PlaceOf(u"B1")), (platform::TextLook{false, true, Rgb(0, 0, 255)}));
    EXPECT_EQ(pane().Selection(), (platform::TextSpan{PlaceOf(u"B1"), 0}));
    EXPECT_EQ(Tint(u"B1"), 33);
    EXPECT_EQ(Here(), "[B.xls]S!$B$1");
}

TEST_F(ExplorerPane, TheOptionsSayHowItIsMarked) {
    state_.options->SetbFormulaBold(true);
    state_.options->SetbFormulaUnderline(false);
    state_.options->SetbFormulaColour(false);
    Select(NodeOf(u"B1"));
    EXPECT_EQ(pane().LookAt(PlaceOf(u"B1")), (platform::TextLook{true, false, 0}));
    state_.options->SetbFormulaBold(false);
    Select(1);
    Select(NodeOf(u"B1"));
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(pane().SelStart(), PlaceOf(u"B1"));
}

TEST_F(ExplorerPane, TheRootIsNeverMarked) {
    Select(NodeOf(u"B1"));
    Select(1);
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(Tint(u"B1"), -4142);
    EXPECT_EQ(Tint(u"A1"), 33);
}

TEST_F(ExplorerPane, APartWithoutCellsKeepsTheActiveCellAndTakesTheTintOff) {
    Select(NodeOf(u"B1"));
    Select(NodeOf(u"condition"));
    EXPECT_EQ(Tint(u"B1"), -4142);
    EXPECT_EQ(Here(), "[B.xls]S!$B$1");
}

TEST_F(ExplorerPane, TheCaretAtTheStartIsTheRoot) {
    Select(2);
    Caret(3);
    Caret(0);
    EXPECT_EQ(tree().SelectedNode(), 1);
}

TEST_F(ExplorerPane, AClickAtTheStartOfAFreshWindowIsTheRoot) {
    ASSERT_EQ(tree().SelectedNode(), 0);
    Caret(0);
    EXPECT_EQ(tree().SelectedNode(), 1);
}

// What stands within a name's definition has no place of its own in the text.
TEST_F(ExplorerPane, PartsOfANameAreNeverChosenByTheCaret) {
    host_->model().activeBook->names[u"total"] = {u"Total", u"=S!$C$1+S!$D$1"};
    host_->model().evaluate[u"=Total"] = {scripted::Answer::Kind::kValue, Value(7.0), {}};
    host_->model().activeSheet->At(1, 1).content.formula = u"=Total+B1";
    GoTo(u"A1");
    main_.Explore();
    const std::int32_t name = NodeOf(u"Total");
    ASSERT_NE(name, 0) << TreeText();
    ASSERT_GT(tree().NodeCount(), name + 1) << TreeText();
    ASSERT_EQ(tree().Node(name + 1).parent, name) << TreeText();
    for (std::int32_t place = 1; place <= 6; ++place) {
        Caret(place);
        EXPECT_EQ(Selected(), "Total") << place;
    }
    // Selected in the tree, they mark the name.
    Select(name + 1);
    EXPECT_EQ(Marked(), "Total");
}

TEST_F(ExplorerPane, TheCaretBehindTheLastCharacterIsTheLastRow) {
    Caret(static_cast<std::int32_t>(pane().Text().size()));
    EXPECT_EQ(tree().SelectedNode(), tree().NodeCount());
}

TEST_F(ExplorerPane, TheSmallestPartAroundTheCaretIsSelected) {
    const auto c1 = PlaceOf(u"C1");
    Caret(c1 + 1);
    EXPECT_EQ(Selected(), "C1");
    EXPECT_EQ(Marked(), "C1");
    EXPECT_EQ(pane().Selection(), (platform::TextSpan{c1 + 1, 0})) << "the user's caret stays";
    Caret(c1 + 2);  // right behind it counts
    EXPECT_EQ(Selected(), "C1");
}

TEST_F(ExplorerPane, ASelectionAcrossPartsIsWhatHoldsThemAll) {
    const auto b1 = static_cast<std::int32_t>(pane().Text().find(u"B1", 6));
    Caret(b1, 5);  // B1,C1
    // The call and the branch that it is are equally long: the outer one stays.
    EXPECT_EQ(Selected(), "if true (chosen)");
    EXPECT_EQ(Marked(), "SUM(B1,C1)");
    EXPECT_EQ(pane().Selection(), (platform::TextSpan{b1, 5}));
    const auto before = tree().SelectedNode();
    Caret(1, static_cast<std::int32_t>(pane().Text().size()) - 1);  // the root alone holds it
    EXPECT_EQ(tree().SelectedNode(), before);
}

TEST_F(ExplorerPane, SelectingARowRunsOnceAndTellsNobodyTwice) {
    accesses().StartLog();
    Caret(PlaceOf(u"C1") + 1);
    EXPECT_EQ(accesses().CountOf("Range.Select"), 1);
}

TEST_F(ExplorerPane, PaintingIsLockedOnceTheWindowWasSeen) {
    accesses().StartLog();
    Select(2);
    EXPECT_EQ(accesses().CountOf("Windows.LockUpdates"), 0);
    platform_.windows.Deliver(platform::FormActivated{form().Id()});
    Select(3);
    EXPECT_EQ(accesses().CountOf("Windows.LockUpdates"), 2);
    EXPECT_FALSE(form().State().self.Get<bool>(platform::Property::kUpdatesLocked));
}

TEST_F(ExplorerPane, AWorkbookThatIsClosedMeanwhileHurtsNobody) {
    host_->CloseBook(u"B.xls");
    for (std::int32_t node = 1; node <= tree().NodeCount(); ++node) Select(node);
    Caret(3);
    form().Unload();
    EXPECT_TRUE(Boxes().empty());
    EXPECT_TRUE(platform_.windows.forms().empty());
}

TEST_F(ExplorerPane, ARowWithoutAnElementIsSurvived) {
    accesses().FailMember("Range.Formula");
    Deliver(names::kEveryFunction, platform::Toggled{0, 0, false});
    accesses().FailNothing();
    platform_.messageBoxes.shown.clear();
    // The rows are still those of before; their elements are gone.
    Select(2);
    Select(1);
    Caret(4);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Marked(), "");
}

}  // namespace
}  // namespace korvane
