// What the user does in an explorer while he is in the middle of something in Calc.
#include <gtest/gtest.h>

#include "addin_in_calc.h"

namespace korvane::test {
namespace {

class Busy : public AddinInCalc {
protected:
    // The keyboard goes to a window with this title.
    void GoTo(const std::string& title) {
        desktop_->Do("search --onlyvisible --name '^" + title + "' windowactivate --sync");
        WaitForKeyboard(title);
    }
    std::string Cursor() { return calc_->Ask("cursor"); }
    void ExpectCursor(const std::string& cell) { ExpectAnswer("cursor", cell); }
    // Does something in Calc that begins to edit the selected cell.
    void Edit(const std::string& keys) {
        ASSERT_TRUE(calc_->Activate("loan.fods"));
        desktop_->Do(keys);
        const auto is = [](const std::string& answer) { return answer == "yes"; };
        ASSERT_TRUE(is(calc_->AskUntil("editing", is)));
    }
    // An explorer whose rows are all there, with the keyboard. None is selected.
    void ExploreUnfolded() {
        Explore("Loan.B9");
        Press("Down");
        Press("asterisk");
        ExpectCursor("Loan.B9");
    }
    // Steps that the office and the view have had time for.
    void Settle() {
        for (int k = 0; k < 15; ++k) {
            calc_->Ask("ready");
            desktop_->Do("sleep 0.05");
        }
    }
};

TEST_F(Busy, ADialogActsOnTheCellsThatItWasOpenedFor) {
    ASSERT_EQ(calc_->Ask("put Loan.H1 stays"), "done");
    ASSERT_EQ(calc_->Ask("put Loan.H2 goes"), "done");
    ASSERT_EQ(calc_->Ask("put Loan.H3 =H1"), "done");
    Explore("Loan.H3");
    ASSERT_EQ(calc_->Ask("select Loan.H2"), "done");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Press("BackSpace");
    ASSERT_EQ(calc_->Windows("Delete Contents", 1), 1);
    GoTo(kExplorer);
    Press("Down");
    Press("Down");  // H1
    Settle();
    EXPECT_EQ(Cursor(), "Loan.H2");
    GoTo("Delete Contents");
    Press("Return");
    EXPECT_EQ(calc_->Windows("Delete Contents", 0), 0);
    ExpectCursor("Loan.H1");
    const std::string cells = calc_->Ask("cells");
    EXPECT_TRUE(Holds(cells, "Loan.H1stays|")) << cells;
    EXPECT_FALSE(Holds(cells, "Loan.H2")) << cells;
}

TEST_F(Busy, WhatIsTypedIntoACellStaysThere) {
    ExploreUnfolded();
    ASSERT_EQ(calc_->Ask("select Loan.C7"), "done");
    ASSERT_NO_FATAL_FAILURE(Edit("type hel"));
    GoTo(kExplorer);
    Press("Down");
    Press("Down");
    Press("Down");
    Press("Down");
    Press("Down");  // B6
    Settle();
    desktop_->Picture("held_while_editing");
    EXPECT_EQ(calc_->Ask("cells"), cells_);
    EXPECT_EQ(Cursor(), "Loan.C7");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    desktop_->Do("type lo");
    Settle();
    EXPECT_EQ(Cursor(), "Loan.C7");
    Press("Return");
    ExpectCursor("Loan.B6");
    EXPECT_TRUE(Holds(calc_->Ask("cells"), "Loan.C7hello|"));
}

// The window goes when the user is free, and no sooner: that gives the cells back.
TEST_F(Busy, AnExplorerThatIsClosedMeanwhileGoesAfterwards) {
    Explore("Loan.B9");
    EXPECT_FALSE(UnfoldAndWalkToTint().empty());
    const std::string fills = calc_->Ask("fills");
    ASSERT_NO_FATAL_FAILURE(Edit("key F2"));
    GoTo(kExplorer);
    Press("Escape");
    Settle();
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    EXPECT_EQ(calc_->Ask("fills"), fills);
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
}

TEST_F(Busy, BothModesWaitToo) {
    Explore("Loan.B11");
    ASSERT_EQ(calc_->Ask("select Loan.C7"), "done");
    ASSERT_NO_FATAL_FAILURE(Edit("type hello"));
    GoTo(kExplorer);
    desktop_->Do("key alt+f sleep 0.3 key alt+p sleep 0.3");
    Settle();
    EXPECT_EQ(calc_->Ask("cells"), cells_);
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Press("Escape");
    ExpectCursor("Loan.B11");
    GoTo(kExplorer);
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
}

}  // namespace
}  // namespace korvane::test
