// What a random user does to the documents himself.
#include <thread>

#include "random_user.h"

namespace korvane::test {

namespace {

std::string SheetOf(const std::string& cell) { return cell.substr(0, cell.find('.')); }

// "$Main.$A$1:$B$2" as the orders take it; empty for several areas.
std::string AreaIn(const std::string& state) {
    const std::string mark = " selected ";
    const auto begin = state.find(mark) + mark.size();
    std::string area = state.substr(begin, state.find(' ', begin) - begin);
    std::erase(area, '$');
    return area.find(';') == std::string::npos && area.find('.') == area.rfind('.') ? area : "";
}

}  // namespace

std::string RandomUser::WritableCell() {
    const std::string cell = Ask("cursor");
    return protected_.contains(document_ + " " + SheetOf(cell)) ||
                   cell.find('.') == std::string::npos
               ? std::string()
               : cell;
}

void RandomUser::Key(const char* keys, const char* command) {
    Press(keys);
    AskShadow(std::string("run ") + command);
    ExpectSameSteps();
}

void RandomUser::Type() {
    if (!TakeCalc()) return;
    const std::string cell = WritableCell();
    if (cell.empty()) return;
    const int number = ++typed_;
    const std::string text =
        chance_.Below(3) == 0 ? "=A1+C1*" + std::to_string(number) : std::to_string(number);
    Note("type " + text + " into " + cell + " of " + document_);
    desktop_.Do("type --delay 15 '" + text + "'");
    Press("Return");
    AskShadow("select " + cell);
    AskShadow("run .uno:EnterString StringName=" + text);
    ExpectSameSteps();
}

void RandomUser::Undo() {
    if (!TakeCalc()) return;
    Note("undo in " + document_);
    Key("ctrl+z", ".uno:Undo");
}

void RandomUser::Redo() {
    if (!TakeCalc()) return;
    Note("redo in " + document_);
    Key("ctrl+y", ".uno:Redo");
}

void RandomUser::Save() {
    if (!TakeCalc()) return;
    Note("save " + document_);
    Press("ctrl+s");
    AskShadow("run .uno:Save");
    const std::string wanted = AskShadow("flags");
    const auto same = [&](const std::string& now) { return now == wanted; };
    if (!same(calc_.AskUntil("in " + document_ + " flags", same))) {
        throw Trouble(document_ + " is not saved");
    }
}

void RandomUser::Recalculate() {
    if (!TakeCalc()) return;
    Note("recalculate " + document_);
    Press("ctrl+shift+F9");
    AskShadow("run .uno:CalculateHard");
}

namespace {

bool IsWholeRow(const std::string& area) {
    return area.find("XFD") != std::string::npos || area.find("AMJ") != std::string::npos;
}

}  // namespace

void RandomUser::ChangeRows(const char* keys, const char* command) {
    if (!TakeCalc()) return;
    const std::string cell = WritableCell();
    if (cell.empty()) return;
    Press("shift+space");
    std::string row;
    calc_.AskUntil("in " + document_ + " state", [&](const std::string& state) {
        row = AreaIn(state);
        return IsWholeRow(row);
    });
    Note(std::string(command) + " " + row + " of " + document_);
    Press(keys);
    AskShadow("select " + row);
    AskShadow(std::string("run ") + command);
    ExpectSameSteps();
}

void RandomUser::InsertRow() { ChangeRows("ctrl+KP_Add", ".uno:InsertCell"); }

void RandomUser::DeleteRow() { ChangeRows("ctrl+KP_Subtract", ".uno:DeleteCell"); }

void RandomUser::Fill() {
    if (!TakeCalc() || WritableCell().empty()) return;
    const std::string area = AreaIn(Ask("state"));
    // The fill of a whole row does not go with the row in columns that Calc has not had
    // a reason to make; looking at a cell is one.
    if (area.empty() || IsWholeRow(area)) return;
    const std::string command =
        ".uno:BackgroundColor BackgroundColor=" + std::to_string(0x808080 + chance_.Below(1000));
    Note(command + " for " + area + " of " + document_);
    Ask("run " + command);
    AskShadow("select " + area);
    AskShadow("run " + command);
    ExpectSameSteps();
}

void RandomUser::CopyAndPaste() {
    if (!TakeCalc()) return;
    const std::string from = Ask("cursor");
    const std::string to = "Main.F" + std::to_string(20 + chance_.Below(20));
    if (from.find('.') == std::string::npos || protected_.contains(document_ + " Main")) return;
    Note("copy " + from + " to " + to + " in " + document_);
    Ask("select " + from);
    Press("ctrl+c");
    calc_.Ask("ready");
    std::this_thread::sleep_for(100ms);
    Ask("select " + to);
    desktop_.Do("key ctrl+v sleep 0.1 key Escape");
    AskShadow("select " + from);
    AskShadow("run .uno:Copy");
    AskShadow("select " + to);
    AskShadow("run .uno:Paste");
    ExpectSameSteps();
}

void RandomUser::HideOrProtect() {
    static const std::vector<std::string> sheets = {"Fills", "Numbers", "Behind", "Shut"};
    const auto& sheet =
        sheets[static_cast<std::size_t>(chance_.Below(static_cast<int>(sheets.size())))];
    auto& those = chance_.Below(2) == 0 ? hidden_ : protected_;
    const std::string key = document_ + " " + sheet;
    const bool isSo = those.contains(key);
    const std::string how =
        &those == &hidden_ ? (isSo ? "show" : "hide") : (isSo ? "unprotect" : "protect");
    Note(how + " " + sheet + " of " + document_);
    Ask("sheet " + how + " " + sheet);
    AskShadow("sheet " + how + " " + sheet);
    if (isSo) {
        those.erase(key);
    } else {
        those.insert(key);
    }
    ExpectSameSteps();
}

// Closes the document and opens it again.
void RandomUser::Reopen() {
    if (!Find(document_ + " : ").empty()) return;
    Save();
    if (!TakeCalc()) return;
    Note("close " + document_ + " and open it again");
    Press("ctrl+w");
    const auto gone = [this](const std::string& titles) {
        return titles.find(document_ + "|") == std::string::npos;
    };
    if (!gone(calc_.AskUntil("titles", gone))) throw Trouble(document_ + " does not close");
    calc_.Ask("open " + (folder_ / document_).string());
    AskShadow("close");
    shadow_.Ask("open " + shadow_.FileOf(document_).string());
    ExpectSameSteps();
}

}  // namespace korvane::test
