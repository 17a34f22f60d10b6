#include "random_user.h"

#include <algorithm>
#include <numeric>
#include <sstream>
#include <thread>

namespace korvane::test {

struct RandomUser::Action {
    int weight;
    void (RandomUser::*run)();
};

RandomUser::RandomUser(const Desktop& desktop, CalcWithAddin& calc, ShadowCalc& shadow,
                       Chance& chance, std::filesystem::path folder,
                       std::vector<std::string> documents)
    : desktop_(desktop),
      calc_(calc),
      shadow_(shadow),
      chance_(chance),
      folder_(std::move(folder)),
      documents_(std::move(documents)),
      document_(documents_.front()) {
    for (const std::string& document : documents_) {
        protected_.insert(document + " Shut");
        hidden_.insert(document + " Behind");
    }
}

const std::vector<RandomUser::Action>& RandomUser::Actions() {
    static const std::vector<Action> actions = {
        {8, &RandomUser::SelectCell},
        {4, &RandomUser::ClickCell},
        {3, &RandomUser::OtherSheet},
        {3, &RandomUser::OtherDocument},
        {3, &RandomUser::OtherWindow},
        {1, &RandomUser::NewWindow},
        {2, &RandomUser::CloseWindow},
        {14, &RandomUser::Explore},
        {4, &RandomUser::GoBack},
        {16, &RandomUser::WalkTree},
        {8, &RandomUser::ClickInExplorer},
        {5, &RandomUser::PressBox},
        {6, &RandomUser::ExploreOn},
        {5, &RandomUser::CloseExplorer},
        {2, &RandomUser::Settings},
        {1, &RandomUser::About},
        {1, &RandomUser::EditAndExplore},
        {1, &RandomUser::KillView},
        {8, &RandomUser::Type},
        {4, &RandomUser::Undo},
        {3, &RandomUser::Redo},
        {2, &RandomUser::Save},
        {1, &RandomUser::Recalculate},
        {3, &RandomUser::InsertRow},
        {2, &RandomUser::DeleteRow},
        {3, &RandomUser::Fill},
        {2, &RandomUser::CopyAndPaste},
        {2, &RandomUser::HideOrProtect},
        {2, &RandomUser::Reopen},
    };
    return actions;
}

void RandomUser::Act() {
    const auto& all = Actions();
    const int sum = std::accumulate(
        all.begin(), all.end(), 0, [](int so, const Action& action) { return so + action.weight; });
    int left = chance_.Below(sum);
    const auto chosen = std::find_if(
        all.begin(), all.end(), [&](const Action& action) { return (left -= action.weight) < 0; });
    (this->*chosen->run)();
    std::this_thread::sleep_for(chance_.Within(150ms));
    ExpectAlive();
}

std::string RandomUser::Story() const {
    std::string story;
    for (std::size_t k = 0; k < story_.size(); ++k) {
        story += std::to_string(k + 1) + " " + story_[k] + "\n";
    }
    return story;
}

void RandomUser::Note(const std::string& what) { story_.push_back(what); }

void RandomUser::Press(const std::string& keys) const { desktop_.Do("key " + keys); }

std::string RandomUser::Ask(const std::string& order) {
    return calc_.Ask("in " + document_ + " " + order);
}

std::string RandomUser::AskShadow(const std::string& order) {
    return shadow_.AskOf(document_, order);
}

void RandomUser::ExpectAlive() {
    const auto begin = std::chrono::steady_clock::now();
    const std::string answer = calc_.Ask("titles");
    const auto time = std::chrono::steady_clock::now() - begin;
    if (answer == "lost" || answer == "no answer") throw Trouble("Calc is gone: " + answer);
    if (time > 10s) throw Trouble("Calc answers after more than ten seconds only");
}

// ---- windows -------------------------------------------------------------

std::vector<std::string> RandomUser::Find(const std::string& title) const {
    std::istringstream lines(
        desktop_.Do("search --onlyvisible --name '^" + title + "' 2>/dev/null"));
    std::vector<std::string> windows;
    for (std::string line; std::getline(lines, line);) windows.push_back(line);
    return windows;
}

bool RandomUser::IsInFront(const std::string& title) const {
    return desktop_.Do("getactivewindow getwindowname 2>/dev/null").starts_with(title);
}

bool RandomUser::TakeCalc() {
    AnswerAll();
    if (!calc_.Focus(document_)) throw Trouble(document_ + " does not come to the front");
    Press("Escape");
    // An explorer that was asked for may come up late.
    for (int quiet = 0, tries = 0; quiet < 2; ++tries) {
        if (tries == 20) return false;
        std::this_thread::sleep_for(100ms);
        quiet = IsInFront(document_) ? quiet + 1 : 0;
        if (quiet == 0) calc_.Focus(document_);
    }
    return true;
}

bool RandomUser::TakeExplorer() {
    const auto windows = Find("Korvane Explorer$");
    if (windows.empty()) return false;
    const auto& window =
        windows[static_cast<std::size_t>(chance_.Below(static_cast<int>(windows.size())))];
    return Activate(window);
}

// A window beneath a dialog does not take the keyboard.
bool RandomUser::Activate(const std::string& window) const {
    desktop_.Do("windowactivate " + window + " 2>/dev/null");
    for (int tries = 0; tries < 8; ++tries) {
        if (desktop_.Do("getactivewindow 2>/dev/null") == window + "\n") return true;
        std::this_thread::sleep_for(25ms);
    }
    return false;
}

void RandomUser::AnswerAll() {
    for (int tries = 0; IsWaiting(); ++tries) {
        if (tries == 15) throw Trouble("The add-in waits for ever");
        const auto ours = Find(".*Korvane Explorer");
        for (const auto& window : ours) {
            if (!Activate(window)) continue;
            Press("Escape");
            std::this_thread::sleep_for(100ms);
            if (!IsWaiting()) break;
        }
    }
}

void RandomUser::CloseAll() {
    int closed = 0;
    for (int quiet = 0; quiet < 3; std::this_thread::sleep_for(80ms)) {
        ExpectAlive();
        const auto windows = Find(".*Korvane Explorer");
        if (windows.empty()) {
            ++quiet;
            continue;
        }
        quiet = 0;
        if (++closed > 60) throw Trouble("A window of the add-in does not close");
        // While a cell is edited they wait.
        if (closed % 10 == 0) TakeCalc();
        for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
            if (!Activate(*window)) continue;
            Press("Escape");
            break;
        }
    }
}

// A window of the add-in that lies behind Calc's would be lost to its user.
void RandomUser::CheckOwners() {
    for (const auto& window : Find(".*Korvane Explorer")) {
        const std::string owner =
            OutputOf("DISPLAY=" + desktop_.Environment().front().substr(8) + " xprop -id " +
                     window + " WM_TRANSIENT_FOR 2>/dev/null");
        // One that has just been closed.
        if (owner.empty()) continue;
        const auto number = owner.find("0x");
        if (number == std::string::npos) {
            std::this_thread::sleep_for(300ms);
            const auto still = Find(".*Korvane Explorer");
            if (std::find(still.begin(), still.end(), window) == still.end()) continue;
            throw Trouble("A window of the add-in has no owner: " + owner);
        }
        const std::string title = desktop_.Do(
            "getwindowname " + owner.substr(number, owner.find('\n') - number) + " 2>/dev/null");
        if (title.find("LibreOffice") == std::string::npos &&
            title.find("Korvane") == std::string::npos) {
            throw Trouble("A window of the add-in belongs to \"" + title + "\"");
        }
    }
}

void RandomUser::CheckViews() {
    const auto one = [this] { return calc_.Views().size() <= 1; };
    if (!calc_.Until(one)) throw Trouble("There is a second view");
}

// ---- comparing -----------------------------------------------------------

void RandomUser::ExpectSameSteps() {
    const std::string wanted = AskShadow("steps");
    const auto same = [&](const std::string& now) { return now == wanted; };
    const std::string now = calc_.AskUntil("in " + document_ + " steps", same);
    if (now != wanted) {
        throw Trouble("The steps of " + document_ + " are\n" + now + "\ninstead of\n" + wanted);
    }
}

void RandomUser::Compare(const std::string& order) {
    for (const std::string& document : documents_) {
        const std::string wanted = shadow_.AskOf(document, order);
        const auto same = [&](const std::string& now) { return now == wanted; };
        const std::string now = calc_.AskUntil("in " + document + " " + order, same);
        if (same(now)) continue;
        const auto [a, b] = std::mismatch(wanted.begin(), wanted.end(), now.begin(), now.end());
        const auto at = static_cast<std::size_t>(a - wanted.begin());
        const auto begin = at == 0 ? 0 : wanted.rfind('|', at - 1) + 1;
        const auto part = [begin](const std::string& text) {
            return begin < text.size() ? text.substr(begin, std::min<std::size_t>(
                                                                text.find('|', begin) - begin, 300))
                                       : std::string("nothing");
        };
        throw Trouble("The " + order + " of " + document + " is\n" + part(now) + "\ninstead of\n" +
                      part(wanted));
    }
}

void RandomUser::Rest() {
    CheckOwners();
    CloseAll();
    TakeCalc();
    Compare("steps");
    Compare("everything");
    Compare("flags");
    Compare("mode");
    CheckViews();
}

// ---- selecting and moving ------------------------------------------------

void RandomUser::SelectCell() {
    static const std::vector<std::string> cells = {
        "Main.B2",  "Main.B3", "Main.B4",     "Main.B2",     "Main.B7", "Main.A1",
        "Fills.C2", "Main.B9", "Fills.E4:F6", "Fills.A1:B4", "Main.C20"};
    const auto& cell =
        cells[static_cast<std::size_t>(chance_.Below(static_cast<int>(cells.size())))];
    if (hidden_.contains(document_ + " " + cell.substr(0, cell.find('.')))) return;
    Note("select " + cell + " in " + document_);
    Ask("select " + cell);
}

void RandomUser::ClickCell() {
    if (!TakeCalc()) return;
    const int x = 50 + chance_.Below(500);
    const int y = 145 + chance_.Below(500);
    Note("click at " + std::to_string(x) + "," + std::to_string(y));
    desktop_.Do("mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1 sleep 0.6");
}

void RandomUser::OtherSheet() {
    if (!TakeCalc()) return;
    const bool isNext = chance_.Below(2) == 0;
    Note(isNext ? "next sheet" : "sheet before");
    Press(isNext ? "ctrl+Next" : "ctrl+Prior");
}

void RandomUser::OtherDocument() {
    document_ =
        documents_[static_cast<std::size_t>(chance_.Below(static_cast<int>(documents_.size())))];
    Note("go to " + document_);
    TakeCalc();
}

void RandomUser::OtherWindow() {
    Note("go to an explorer");
    TakeExplorer();
}

void RandomUser::NewWindow() {
    if (!Find(document_ + " : ").empty() || !TakeCalc()) return;
    Note("new window of " + document_);
    desktop_.Do("key alt+w sleep 0.2 key n sleep 0.5");
}

void RandomUser::CloseWindow() {
    const std::string second = document_ + " : 2";
    if (Find(second).empty() || !TakeCalc() || !calc_.Focus(second)) return;
    Note("close the second window of " + document_);
    if (IsInFront(second)) Press("ctrl+w");
}

}  // namespace korvane::test
