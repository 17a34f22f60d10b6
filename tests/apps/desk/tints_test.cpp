// What the user saves while an explorer shows its cells, and what is left when the
// office dies meanwhile.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "addin_in_calc.h"

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

class TintsInCalc : public AddinInCalc {
protected:
    // Explores a cell and goes to a part with cells; which are tinted then.
    std::string ExploreToTint() {
        Explore("Loan.B9");
        return UnfoldAndWalkToTint();
    }
    std::string Text() const {
        std::ifstream in(book(), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    // The journals, wherever the state is kept.
    std::size_t Journals() const {
        std::size_t count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
            if (entry.path().extension() == ".journal") ++count;
        }
        return count;
    }
};

TEST_F(TintsInCalc, WhatIsSavedMeanwhileHasNone) {
    const std::string tinted = ExploreToTint();
    ASSERT_TRUE(Holds(tinted, "=52479")) << tinted;
    EXPECT_EQ(Journals(), 1u);
    ASSERT_EQ(calc_->Ask("put Loan.D20 changed"), "done");
    ASSERT_TRUE(Holds(calc_->Ask("state"), "modified 1"));
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    Press("ctrl+s");
    EXPECT_TRUE(
        Holds(calc_->AskUntil("state",
                              [](const std::string& state) { return Holds(state, "modified 0"); }),
              "modified 0"));
    EXPECT_TRUE(Holds(Text(), "changed"));
    EXPECT_FALSE(Holds(Text(), "00ccff"));
    // Calc counts it as saved before it has done saving.
    ExpectAnswer("fills", tinted);
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    // Closing the document takes the tint off, too.
    ASSERT_EQ(calc_->Ask("close"), "done");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    EXPECT_EQ(Journals(), 0u);
}

TEST_F(TintsInCalc, TheJournalOutlivesAnOfficeThatDies) {
    ASSERT_TRUE(Holds(ExploreToTint(), "=52479"));
    ASSERT_EQ(Journals(), 1u);
    ::kill(calc_->id(), SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(calc_->WaitForEnd()));
    EXPECT_EQ(Journals(), 1u);
    // The next one finds nothing to be put back, and is done with it.
    Start();
    calc_->AskUntil("ready", [&](const std::string&) { return Journals() == 0; });
    EXPECT_EQ(Journals(), 0u);
    EXPECT_EQ(calc_->Ask("fills"), "");
    EXPECT_TRUE(Holds(calc_->Ask("state"), "modified 0 undo 0 locked 0"));
}

}  // namespace
}  // namespace korvane::test
