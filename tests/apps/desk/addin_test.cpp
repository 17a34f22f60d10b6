// The whole add-in as the user of a running Calc meets it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>

#include "addin_in_calc.h"

namespace korvane::test {
namespace {

TEST_F(AddinInCalc, ExploresACellAndAPartOfItAndGivesEverythingBack) {
    Explore("Loan.B9");
    const std::string tinted = UnfoldAndWalkToTint();
    EXPECT_TRUE(Holds(tinted, "=52479")) << tinted;  // 00CCFF
    EXPECT_TRUE(Holds(calc_->Ask("state"), "modified 0 undo 0 locked 0"));
    desktop_->Picture("explorer_over_calc");
    Press("ctrl+q");
    EXPECT_EQ(calc_->Windows(kExplorer, 2), 2);
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    WaitForKeyboard(kExplorer);
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
    WaitForKeyboard("LibreOffice Calc");
}

TEST_F(AddinInCalc, GoesBackOverSheetsAndDocuments) {
    Explore("Loan.B9");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    Explore("Scenarios.C3");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    Open(other());
    Explore("Schedule.B3");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    calc_->Ask("select Loan.A1");
    ASSERT_TRUE(calc_->Activate("other.fods"));
    const auto back = [this](const std::string& where) {
        Press("alt+q");
        const auto is = [&](const std::string& state) { return Holds(state, where); };
        const std::string state = calc_->AskUntil("state", is);
        EXPECT_TRUE(is(state)) << state;
    };
    back("other.fods selected $Schedule.$B$3");
    back("loan.fods selected $Scenarios.$C$3");
    back("loan.fods selected $Loan.$B$9");
}

TEST_F(AddinInCalc, BothModesWork) {
    Explore("Loan.B11");
    // A box stays pressed for a tenth of a second after its access key, and the
    // Escape key would only let go of it.
    desktop_->Do("key alt+f sleep 0.3 key alt+p sleep 0.3 key alt+f sleep 0.3 key alt+p sleep 0.3");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
}

TEST_F(AddinInCalc, SettingsAreChangedInTheDialogAndKept) {
    ASSERT_NO_FATAL_FAILURE(OpenSettings());
    // Calc does not take the keyboard while it waits.
    desktop_->Do("key alt+b sleep 0.3 key Return");
    EXPECT_EQ(calc_->Windows(kSettings, 0), 0);
    std::ifstream stored(folder_ / "config/Korvane/Korvane.ini");
    const std::string text{std::istreambuf_iterator<char>(stored), {}};
    EXPECT_TRUE(Holds(text, "optFormulaBold=1")) << text;
    ExpectUntouched();
    Explore("Loan.B9");
}

TEST_F(AddinInCalc, DeclinesWhileACellIsEdited) {
    ASSERT_EQ(calc_->Ask("select Loan.B9"), "done");
    Press("F2");
    Press("ctrl+q");
    // The notice has the product's title, too.
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    WaitForKeyboard(kExplorer);
    Press("Return");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Press("Escape");
    ExpectUntouched();
    Explore("Loan.B9");
}

TEST_F(AddinInCalc, AViewThatDiesIsReplaced) {
    const char* const rounds = std::getenv("KORVANE_ROUNDS");
    for (int left = rounds != nullptr ? std::atoi(rounds) : 3; left > 0; --left) {
        Explore("Loan.B9");
        EXPECT_FALSE(UnfoldAndWalkToTint().empty());
        const auto views = calc_->Views();
        ASSERT_EQ(views.size(), 1U);
        ASSERT_EQ(::kill(views.front(), SIGKILL), 0);
        EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
        ExpectUntouched();
    }
}

TEST_F(AddinInCalc, AViewThatStallsIsGivenUp) {
    Explore("Loan.B9");
    EXPECT_FALSE(UnfoldAndWalkToTint().empty());
    const auto views = calc_->Views();
    ASSERT_EQ(views.size(), 1U);
    ASSERT_EQ(::kill(views.front(), SIGSTOP), 0);
    ExpectUntouched();
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    Explore("Loan.B9");
}

TEST_F(AddinInCalc, ADocumentTakesItsExplorersWithIt) {
    Open(other());
    Explore("Loan.B9");
    EXPECT_FALSE(UnfoldAndWalkToTint().empty());
    ASSERT_EQ(calc_->Ask("close"), "done");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();  // the other one
    Explore("Loan.B9");
}

TEST_F(AddinInCalc, AWindowTakesItsExplorersWithItThoughTheDocumentStays) {
    ASSERT_NO_FATAL_FAILURE(OpenSecondWindow());
    Press("ctrl+q");
    ASSERT_EQ(calc_->Windows(kExplorer, 1), 1);
    ASSERT_TRUE(calc_->Focus("loan.fods : 2"));
    Press("ctrl+w");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    ExpectUntouched();
    Explore("Loan.B9");
}

TEST_F(AddinInCalc, EndsWithTheOffice) {
    Explore("Loan.B9");
    EXPECT_FALSE(UnfoldAndWalkToTint().empty());
    const auto views = calc_->Views();
    ASSERT_EQ(views.size(), 1U);
    EXPECT_EQ(calc_->Ask("quit"), "done");
    const int status = calc_->WaitForEnd();
    EXPECT_TRUE(WIFEXITED(status)) << status;
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_NE(::kill(views.front(), 0), 0);
    EXPECT_EQ(OutputOf("grep -rilF korvane " + (folder_ / "profile/user").string()), "");
}

}  // namespace
}  // namespace korvane::test
