// Explorers over several documents, and dialogs that wait before all of them.
#include <gtest/gtest.h>

#include <sstream>

#include "addin_in_calc.h"
#include "platform/window/host_waits.h"

namespace korvane::test {
namespace {

class SeveralWindows : public AddinInCalc {
protected:
    // Every document's window covers nearly all of the desktop.
    void Spread() {
        desktop_->Do("search --onlyvisible --name 'LibreOffice Calc' windowmove %@ 0 0");
        desktop_->Do("search --onlyvisible --name 'LibreOffice Calc' windowsize %@ 1270 940");
    }
    // The titles of all windows from the front to the back, each on a line.
    std::string Stack() {
        std::istringstream ids(OutputOf(desktop_->Environment().front() +
                                        " xprop -root -notype _NET_CLIENT_LIST_STACKING"));
        std::string titles;
        for (std::string id; std::getline(ids, id, ',');) {
            const auto number = id.find("0x");
            if (number == std::string::npos) continue;
            titles.insert(0, desktop_->Do("getwindowname " + std::to_string(std::stoul(
                                                                 id.substr(number), nullptr, 16))));
        }
        return titles;
    }
    // The explorer is in front of all, has the keyboard, and this window is behind it.
    void ExpectExplorerAbove(const std::string& title) {
        const std::string wanted = std::string(kExplorer) + "\n" + title + " - ";
        std::string stack;
        calc_->AskUntil("ready",
                        [&](const std::string&) { return (stack = Stack()).starts_with(wanted); });
        EXPECT_TRUE(stack.starts_with(wanted)) << stack;
        EXPECT_TRUE(Holds(ActiveWindow(), kExplorer)) << ActiveWindow();
    }
    void ExpectCursorIn(const std::string& book, const std::string& cell) {
        ExpectAnswer("in " + book + " cursor", cell);
    }
    // The book refers to the other one, which is open; the row of the cell itself is
    // selected, and the next one is of the other book.
    void ExploreAPartElsewhere() {
        Open(other());
        ASSERT_EQ(calc_->Ask("select Loan.A1"), "done");
        ASSERT_TRUE(calc_->Activate("loan.fods"));
        const std::string there = "'file://" + other().string() + "'#$Loan.";
        ASSERT_EQ(calc_->Ask("put Loan.H1 =" + there + "B6+" + there + "B7+B5"), "done");
        Spread();
        Explore("Loan.H1");
        EXPECT_EQ(WalkToTint(), "Loan.H1=52479 ");
    }
};

TEST_F(SeveralWindows, APartElsewhereIsShownBelowTheExplorer) {
    ASSERT_NO_FATAL_FAILURE(ExploreAPartElsewhere());
    ExpectExplorerAbove("loan.fods");
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B6");
    ExpectExplorerAbove("other.fods");
    // As fast as a user types.
    for (int k = 0; k < 10; ++k) desktop_->Do("key Up Up Down Down Down Up");
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B7");
    Press("Down");
    ExpectCursorIn("loan.fods", "Loan.B5");
    ExpectExplorerAbove("loan.fods");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    WaitForKeyboard("loan.fods");
    EXPECT_EQ(calc_->Ask("in other.fods fills"), "");
    EXPECT_EQ(calc_->Ask("in other.fods cells"), cells_);
}

// The user himself goes back and works on where he was.
TEST_F(SeveralWindows, TheUserGoesOnInTheDocumentThatHeActivates) {
    ASSERT_NO_FATAL_FAILURE(ExploreAPartElsewhere());
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B6");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    ASSERT_EQ(calc_->Ask("select Loan.B9"), "done");
    Press("ctrl+q");
    ASSERT_EQ(calc_->Windows(kExplorer, 2), 2);
    ExpectExplorerAbove("loan.fods");
    Press("Down");
    ExpectCursorIn("loan.fods", "Loan.B9");
    ExpectExplorerAbove("loan.fods");
}

TEST_F(SeveralWindows, ADocumentTakesTheExplorersThatStandAboveIt) {
    ASSERT_NO_FATAL_FAILURE(ExploreAPartElsewhere());
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B6");
    ASSERT_EQ(calc_->Ask("in other.fods close"), "done");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    EXPECT_EQ(calc_->Ask("in loan.fods fills"), "");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Explore("Loan.B9");
}

TEST_F(SeveralWindows, AMinimisedDocumentIsShownAndTheExplorerKeepsTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(ExploreAPartElsewhere());
    desktop_->Do("search --name '^other.fods' windowminimize %@");
    WaitForKeyboard(kExplorer);
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B6");
    ExpectExplorerAbove("other.fods");
    Press("Down");
    ExpectCursorIn("other.fods", "Loan.B7");
}

TEST_F(SeveralWindows, OneOfTwoWindowsOfADocumentMayGo) {
    Explore("Loan.B9");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    ASSERT_NO_FATAL_FAILURE(OpenSecondWindow());
    Press("ctrl+w");
    desktop_->Do("search --onlyvisible --name '^" + std::string(kExplorer) +
                 "$' windowactivate --sync");
    WaitForKeyboard(kExplorer);
    Press("Down");
    ExpectCursorIn("loan.fods", "Loan.B9");
    EXPECT_TRUE(Holds(ActiveWindow(), kExplorer)) << ActiveWindow();
    Press("asterisk");
    EXPECT_FALSE(WalkToTint().empty());
    EXPECT_TRUE(Holds(ActiveWindow(), kExplorer)) << ActiveWindow();
}

TEST_F(SeveralWindows, ADocumentThatComesDuringADialogWaitsToo) {
    ASSERT_NO_FATAL_FAILURE(OpenSettings());
    ASSERT_EQ(calc_->Ask("open " + other().string()), "done");
    WaitForKeyboard(kSettings);
    Spread();
    desktop_->Do("search --onlyvisible --name '^other.fods' windowactivate sleep 0.2");
    WaitForKeyboard(kSettings);
    EXPECT_EQ(calc_->Windows(kSettings, 1), 1);
    desktop_->Do("search --onlyvisible --name '^other.fods' windowactivate sleep 0.2 type lost");
    WaitForKeyboard(kSettings);
    desktop_->Do("mousemove 1000 870 click 1 sleep 0.5 key ctrl+q");
    WaitForKeyboard(kSettings);
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    EXPECT_EQ(calc_->Ask("in other.fods cells"), cells_);
    EXPECT_EQ(calc_->Ask("quit"), "refused");
    WaitForKeyboard(kSettings);
    desktop_->Picture("settings_over_two_documents");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kSettings, 0), 0);
    desktop_->Do("sleep 0.5");  // until the keyboard is given where it belongs
    WaitForKeyboard("LibreOffice Calc");
    // Both are alive: they are typed into, and their menus and toolbars open.
    for (const char* name : {"other.fods", "loan.fods"}) {
        ASSERT_TRUE(calc_->Activate(name));
        ASSERT_EQ(calc_->Ask("select Loan.H9"), "done");
        desktop_->Do("type 7");
        Press("Return");
        const auto isTyped = [](const std::string& cells) { return Holds(cells, "Loan.H97|"); };
        EXPECT_TRUE(isTyped(calc_->AskUntil("cells", isTyped))) << name;
        Explore("Loan.B9");
        Press("Escape");
        EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
        ASSERT_TRUE(calc_->Activate(name));
        ASSERT_NO_FATAL_FAILURE(OpenSettings());
        Press("Escape");
        EXPECT_EQ(calc_->Windows(kSettings, 0), 0);
    }
}

TEST_F(SeveralWindows, ADialogIsFoundAgainWhereverTheUserTriesToGoOn) {
    Open(other());
    Spread();
    ASSERT_NO_FATAL_FAILURE(OpenSettings());
    for (const char* name : {"loan.fods", "other.fods", "loan.fods"}) {
        desktop_->Do("search --onlyvisible --name '^" + std::string(name) +
                     "' windowactivate sleep 0.2");
        WaitForKeyboard(kSettings);
        desktop_->Do("search --onlyvisible --name '^" + std::string(name) + "' windowraise");
        EXPECT_EQ(calc_->Ask("quit"), "refused");
        WaitForKeyboard(kSettings);
    }
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kSettings, 0), 0);
}

// The window by which Calc waits is nobody's to type into, whoever gave it the keyboard.
TEST_F(SeveralWindows, ADialogKeepsTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(OpenSettings());
    for (int k = 0; k < 3; ++k) {
        desktop_->Do("search --onlyvisible --name '^" + std::string(platform::kHostWaits) +
                     "$' windowfocus sleep 0.2");
        WaitForKeyboard(kSettings);
    }
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kSettings, 0), 0);
    WaitForKeyboard("loan.fods");
}

TEST_F(SeveralWindows, ADialogHasTheKeyboardAgainAfterAMessageOverIt) {
    constexpr const char* kAbout = "About Korvane Explorer";
    desktop_->Do("key alt+t sleep 0.3 key x sleep 0.3 key a");
    ASSERT_EQ(calc_->Windows(kAbout, 1), 1);
    WaitForKeyboard(kAbout);
    Press("alt+u");  // asks for an update, and there is nobody to ask
    ASSERT_EQ(calc_->Windows(kExplorer, 1), 1);
    WaitForKeyboard(kExplorer);
    Press("Return");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    WaitForKeyboard(kAbout);
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kAbout, 0), 0);
    WaitForKeyboard("LibreOffice Calc");
}

}  // namespace
}  // namespace korvane::test
