// What Calc saves of a document while it crashes, and what comes of that.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <atomic>
#include <thread>

#include "kills_in_calc.h"

namespace korvane::test {
namespace {

class CalcCrashes : public KillsInCalc {
protected:
    std::vector<std::string> Environment() override { return {kRecovers}; }

    // Agrees to all that the office proposes to do about its crash.
    class Agreeing {
    public:
        explicit Agreeing(const Desktop& desktop)
            : thread_([this, &desktop] {
                  while (!isOver_) {
                      desktop.Do(
                          "search --onlyvisible --name 'Document Recovery' windowactivate %1 "
                          "sleep 0.1 key Return 2>/dev/null");
                      std::this_thread::sleep_for(300ms);
                  }
              }) {}
        ~Agreeing() {
            isOver_ = true;
            thread_.join();
        }
        Agreeing(const Agreeing&) = delete;
        Agreeing& operator=(const Agreeing&) = delete;

    private:
        std::atomic<bool> isOver_ = false;
        std::thread thread_;
    };

    // Waits until the crash is over; whether the office managed to save the document.
    bool Crash(pid_t process) {
        ::kill(process, SIGSEGV);
        ::kill(process, SIGCONT);
        const Agreeing agreeing(*desktop_);
        const int status = calc_->WaitForEnd();
        return status != -1 && WIFEXITED(status);
    }
    // The document but for what its user has typed.
    static std::string WithoutChange(std::string text) {
        const auto begin = text.find("Main.D20 changed");
        if (begin != std::string::npos) text.erase(begin, text.find('|', begin) + 1 - begin);
        return text;
    }
    void StartAgain() {
        const Agreeing agreeing(*desktop_);
        Start();
    }
};

TEST_F(CalcCrashes, WhatIsRecoveredHasNothingOfOurs) {
    static const std::vector<Business> all = {
        {"walking", "explored", "Down", 16, 1200ms, false},
        {"evaluating", "slow", "alt+p", 1, 700ms, false},
    };
    for (int round = 0; round < (Rounds() + 2) / 3 && !HasFatalFailure(); ++round) {
        const Business& business = all[static_cast<std::size_t>(chance_.Below(2))];
        SCOPED_TRACE(chance_.Trace() + ", round " + std::to_string(round) + ": " + business.name);
        ASSERT_EQ(calc_->Ask("put Main.D20 changed" + std::to_string(round)), "done");
        const std::string changed = calc_->Ask("everything");
        const std::string file = Text();
        Prepare(business);
        if (HasFailure()) return;
        HoldAtRandom(business, [this] { return calc_->id(); });
        if (HasFatalFailure()) return;
        const pid_t process = std::exchange(held_, 0);
        const bool hasSaved = Crash(process);
        Count(business.name, hasSaved ? "saved" : "not saved");
        EXPECT_TRUE(calc_->Until([this] { return ProcessesOf("korvane-view").empty(); }));
        EXPECT_TRUE(Text() == file);
        StartAgain();
        if (HasFatalFailure()) return;
        EXPECT_TRUE(calc_->Until([this] { return Journals() == 0; }));
        // One that could not be saved may be what was recovered before.
        const std::string now = calc_->Ask("everything");
        EXPECT_EQ(Difference(WithoutChange(changed), WithoutChange(now)), "");
        EXPECT_TRUE(!hasSaved || now == changed);
        const std::string state = calc_->Ask("state");
        EXPECT_TRUE(Holds(state, "undo 0 locked 0")) << state;
        ExpectExplores();
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace korvane::test
