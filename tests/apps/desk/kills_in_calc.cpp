#include "kills_in_calc.h"

#include <signal.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <thread>

#include "bindings/calc/desk/journal_text.h"
#include "painted_book.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

std::string TextOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool IsThere(pid_t process) { return ::kill(process, 0) == 0; }

// Presses keys until they have been pressed often enough, or nobody wants them any
// more. Never leaves one held down.
class Pressing {
public:
    Pressing(const Desktop& desktop, const Business& business)
        : thread_([this, &desktop, &business] {
              for (int left = business.times; left > 0 && !isOver_; --left) {
                  desktop.Do(std::string("key ") + business.keys);
                  if (left > 1) std::this_thread::sleep_for(50ms);
              }
          }) {}
    ~Pressing() {
        isOver_ = true;
        thread_.join();
    }
    Pressing(const Pressing&) = delete;
    Pressing& operator=(const Pressing&) = delete;

private:
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

}  // namespace

std::string Difference(const std::string& before, const std::string& after) {
    const auto [a, b] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    if (a == before.end() && b == after.end()) return {};
    const auto at = static_cast<std::size_t>(a - before.begin());
    const auto begin = at == 0 ? 0 : before.rfind('|', at - 1) + 1;
    const auto part = [begin](const std::string& text) {
        return text.substr(begin, std::min(text.find('|', begin), begin + 200) - begin);
    };
    return "before: " + part(before) + "\nafter: " + part(after);
}

void KillsInCalc::MakeBooks() {
    WritePaintedBook(book());
    WritePaintedBook(other());
}

void KillsInCalc::SetUp() {
    AddinInCalc::SetUp();
    if (calc_) everything_ = calc_->Ask("everything");
}

void KillsInCalc::TearDown() {
    for (const auto& [business, phases] : tally_) {
        std::cout << "hit while " << business << ":";
        for (const auto& [phase, count] : phases) std::cout << "  " << phase << " " << count;
        std::cout << std::endl;
    }
    if (held_ != 0) ::kill(held_, SIGKILL);
    AddinInCalc::TearDown();
}

int KillsInCalc::Rounds() { return static_cast<int>(NumberIn("KORVANE_ROUNDS", 3)); }

const Business& KillsInCalc::Choose(int round) const {
    static const std::vector<Business> all = {
        {"exploring", "selected", "ctrl+q", 1, 250ms, true},
        {"walking", "explored", "Down", 16, 1200ms, false},
        {"evaluating", "slow", "alt+p", 1, 700ms, false},
        {"in a dialog", "selected", "alt+t x s", 1, 500ms, true},
        {"told something", "edited", "ctrl+q", 1, 250ms, true},
    };
    return all[(chance_.seed() + static_cast<unsigned>(round)) % all.size()];
}

void KillsInCalc::Prepare(const Business& business) {
    const std::string what = business.prepare;
    if (what == "explored") return Explore("Main.B2");
    if (what == "slow") return Explore("Main.B3");
    ASSERT_EQ(calc_->Ask("select Main.B2"), "done");
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    if (what == "edited") Press("F2");
}

void KillsInCalc::HoldAtRandom(const Business& business, const std::function<pid_t()>& victim) {
    held_ = victim();
    const auto moment = chance_.Within(business.span);
    SCOPED_TRACE(business.name + std::string(" for ") + std::to_string(moment.count()) + " ms");
    const Pressing pressing(*desktop_, business);
    std::this_thread::sleep_for(moment);
    for (int tries = 0; held_ == 0 && tries < 200; ++tries) held_ = victim();
    ASSERT_NE(held_, 0);
    ASSERT_EQ(::kill(held_, SIGSTOP), 0);
    const std::string phase = PhaseWhenHeld();
    const bool hasWindow = !OurWindows().empty();
    Count(business.name, (hasWindow ? "window" : "no window") + phase);
}

void KillsInCalc::KillHeld() {
    ASSERT_EQ(::kill(held_, SIGKILL), 0);
    held_ = 0;
}

std::string KillsInCalc::PhaseWhenHeld() const {
    std::error_code missing;
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / "state", missing)) {
        if (entry.path().extension() != ".journal") continue;
        calc::JournalContent content;
        calc::ReadJournal(TextOf(entry.path()), content);
        return std::string(content.fills.empty() ? "" : ", tinted") +
               (content.formulas.empty() ? "" : ", formula written");
    }
    return {};
}

std::vector<std::string> KillsInCalc::OurWindows() const {
    std::istringstream lines(
        desktop_->Do("search --onlyvisible --name 'Korvane Explorer' getwindowname %@ "
                     "2>/dev/null"));
    std::vector<std::string> titles;
    for (std::string line; std::getline(lines, line);) titles.push_back(line);
    return titles;
}

int KillsInCalc::CloseOurs() {
    int closed = 0;
    for (int quiet = 0; quiet < 3 && closed < 20;) {
        EXPECT_NE(calc_->Ask("ready"), "lost");
        if (OurWindows().empty()) {
            ++quiet;
            std::this_thread::sleep_for(100ms);
            continue;
        }
        quiet = 0;
        ++closed;
        desktop_->Do(
            "search --onlyvisible --name 'Korvane Explorer' windowactivate %1 "
            "sleep 0.05 key Escape sleep 0.1 2>/dev/null");
    }
    EXPECT_TRUE(OurWindows().empty());
    return closed;
}

void KillsInCalc::ExpectAsBefore(const std::string& everything) {
    const auto same = [&](const std::string& now) { return now == everything; };
    EXPECT_EQ(Difference(everything, calc_->AskUntil("everything", same)), "");
    EXPECT_EQ(calc_->Ask("steps"), "undo redo");
    EXPECT_EQ(calc_->Ask("mode"), "0");
    const std::string state = calc_->Ask("state");
    EXPECT_TRUE(Holds(state, "modified 0 undo 0 locked 0")) << state;
    EXPECT_EQ(Journals(), 0U);
}

void KillsInCalc::ExpectExplores() {
    Explore("Main.B2");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
}

std::vector<pid_t> KillsInCalc::ProcessesOf(const std::string& program) const {
    std::vector<pid_t> found;
    std::istringstream ids(OutputOf("pgrep -x " + program));
    for (pid_t id = 0; ids >> id;) {
        const std::string place = "/proc/" + std::to_string(id) + "/environ";
        if (Holds(TextOf(place), folder_.string()) && IsThere(id)) found.push_back(id);
    }
    return found;
}

std::size_t KillsInCalc::Journals() const {
    std::size_t count = 0;
    std::error_code missing;
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / "state", missing)) {
        if (entry.path().extension() == ".journal") ++count;
    }
    return count;
}

std::string KillsInCalc::Text() const { return TextOf(book()); }

void KillsInCalc::Replace(const std::string& text) const {
    std::ofstream(book(), std::ios::binary) << text;
}

void KillsInCalc::Count(const std::string& business, const std::string& phase) {
    ++tally_[business][phase];
}

}  // namespace korvane::test
