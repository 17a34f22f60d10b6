// A Calc with the add-in in which something dies while its user is busy.
#pragma once

#include <map>
#include <vector>

#include "addin_in_calc.h"
#include "chance.h"

namespace korvane::test {

// What the user is in the middle of.
struct Business {
    const char* name;
    const char* prepare;  // see Prepare
    const char* keys;     // what comes of them is not waited for
    int times;            // that they are pressed, one behind the other
    // Something happens for so long after the keys.
    std::chrono::milliseconds span;
    // Explorers may come up after the death of the view: the keys were for Calc.
    bool mayComeUpLater;
};

// The first cells in which two documents differ; empty when they do not.
std::string Difference(const std::string& before, const std::string& after);

class KillsInCalc : public AddinInCalc {
protected:
    void MakeBooks() override;
    void SetUp() override;
    // Says how often what was hit.
    void TearDown() override;

    // KORVANE_ROUNDS; else a few, for every kind of business one.
    static int Rounds();
    // What is tried in this round.
    const Business& Choose(int round) const;
    // Brings the document to where the business starts: "explored" (or "slow", which
    // takes its time), "selected", or "edited".
    void Prepare(const Business& business);
    // Presses the keys, waits for a random time, and holds the process still.
    // A process that is not there yet is held as soon as it is.
    void HoldAtRandom(const Business& business, const std::function<pid_t()>& victim);
    // Ends the process that is held.
    void KillHeld();

    // Closes what came up; how many windows that were.
    int CloseOurs();
    // The titles of the add-in's windows that can be seen.
    std::vector<std::string> OurWindows() const;
    // The document in Calc is as it was, down to what can be undone.
    void ExpectAsBefore(const std::string& everything);
    // Ctrl+Q shows an explorer, Escape closes it, and nothing is left of that.
    void ExpectExplores();
    // The processes of this test's own that are called so.
    std::vector<pid_t> ProcessesOf(const std::string& program) const;
    std::size_t Journals() const;
    // The text of the book's file, and another one in its place.
    std::string Text() const;
    void Replace(const std::string& text) const;
    // For the tally.
    void Count(const std::string& business, const std::string& phase);

    Chance chance_;
    std::string everything_;  // in the document as it was opened
    pid_t held_ = 0;

private:
    std::string PhaseWhenHeld() const;

    std::map<std::string, std::map<std::string, int>> tally_;
};

}  // namespace korvane::test
