// Views and offices that die at any moment, whatever their user is doing.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include "kills_in_calc.h"

namespace korvane::test {
namespace {

class ViewKills : public KillsInCalc {};
class CalcKills : public KillsInCalc {};

TEST_F(ViewKills, LeaveTheDocumentAndCalcAsTheyWere) {
    for (int round = 0; round < Rounds() && !HasFatalFailure(); ++round) {
        const Business& business = Choose(round);
        SCOPED_TRACE(chance_.Trace() + ", round " + std::to_string(round) + ": " + business.name);
        // Half of the views die young.
        if (chance_.Below(2) == 0) ExpectExplores();
        Prepare(business);
        if (HasFailure()) return;
        HoldAtRandom(business, [this]() -> pid_t {
            const auto views = calc_->Views();
            return views.empty() ? 0 : views.front();
        });
        if (HasFatalFailure()) return;
        const pid_t view = held_;
        KillHeld();
        if (!business.mayComeUpLater) {
            EXPECT_EQ(calc_->Windows("Korvane Explorer.*", 0), 0);
        }
        CloseOurs();
        ASSERT_TRUE(calc_->Activate("loan.fods"));
        Press("Escape");  // what was edited
        ExpectAsBefore(everything_);
        EXPECT_NE(::kill(view, 0), 0);
        EXPECT_LE(calc_->Views().size(), 1U);
        ExpectExplores();
        ExpectAsBefore(everything_);
        if (HasFailure()) return;
    }
}

TEST_F(CalcKills, LeaveNothingInTheFileOrForTheNextStart) {
    const std::string file = Text();
    for (int round = 0; round < Rounds() && !HasFatalFailure(); ++round) {
        const Business& business = Choose(round);
        SCOPED_TRACE(chance_.Trace() + ", round " + std::to_string(round) + ": " + business.name);
        if (chance_.Below(2) == 0) ExpectExplores();
        Prepare(business);
        if (HasFailure()) return;
        HoldAtRandom(business, [this] { return calc_->id(); });
        if (HasFatalFailure()) return;
        KillHeld();
        EXPECT_TRUE(WIFSIGNALED(calc_->WaitForEnd()));
        EXPECT_TRUE(calc_->Until([this] { return ProcessesOf("korvane-view").empty(); }));
        EXPECT_TRUE(Text() == file);
        Start();
        if (HasFatalFailure()) return;
        EXPECT_TRUE(calc_->Until([this] { return Journals() == 0; }));
        ExpectAsBefore(everything_);
        ExpectExplores();
        ExpectAsBefore(everything_);
        if (HasFailure()) return;
    }
}

TEST_F(CalcKills, LeaveNoTintInWhatIsBeingSaved) {
    static const Business kSaving{"saving", "selected", "ctrl+s", 1, 300ms, false};
    for (int round = 0; round < (Rounds() + 2) / 3 && !HasFatalFailure(); ++round) {
        SCOPED_TRACE(chance_.Trace() + ", round " + std::to_string(round));
        const std::string before = Text();
        ASSERT_EQ(calc_->Ask("put Main.D20 changed" + std::to_string(round)), "done");
        const std::string changed = calc_->Ask("everything");
        Explore("Main.B2");
        EXPECT_NE(WalkToTint(), "");
        ASSERT_TRUE(calc_->Activate("loan.fods"));
        HoldAtRandom(kSaving, [this] { return calc_->id(); });
        if (HasFatalFailure()) return;
        KillHeld();
        EXPECT_TRUE(WIFSIGNALED(calc_->WaitForEnd()));
        const std::string after = Text();
        EXPECT_FALSE(Holds(after, "00ccff"));
        // Half a file is what the office leaves without the add-in, too.
        if (!Holds(after, "</office:document>")) Replace(before);
        if (Text() != before) everything_ = changed;
        Count("saving", Text() != before  ? "new file"
                        : after == before ? "old file"
                                          : "half a file");
        Start();
        if (HasFatalFailure()) return;
        EXPECT_TRUE(calc_->Until([this] { return Journals() == 0; }));
        ExpectAsBefore(everything_);
        ExpectExplores();
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace korvane::test
