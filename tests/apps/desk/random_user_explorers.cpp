// What a random user does with the add-in.
#include <signal.h>

#include <sstream>
#include <thread>

#include "random_user.h"

namespace korvane::test {

void RandomUser::Explore() {
    if (!TakeCalc()) return;
    Note("explore " + Ask("cursor") + " in " + document_);
    desktop_.Do("key ctrl+q sleep 0.2");
}

void RandomUser::GoBack() {
    if (!TakeCalc()) return;
    Note("go back");
    Press("alt+q");
}

void RandomUser::WalkTree() {
    static const std::vector<std::string> keys = {
        "Down", "Down", "Down", "Up", "Down", "Left", "asterisk", "Right", "Home", "End", "Tab"};
    if (!TakeExplorer()) return;
    std::string pressed;
    for (int left = 1 + chance_.Below(5); left > 0; --left) {
        pressed +=
            " key " + keys[static_cast<std::size_t>(chance_.Below(static_cast<int>(keys.size())))];
    }
    Note("walk" + pressed);
    desktop_.Do(pressed.substr(1));
}

void RandomUser::ClickInExplorer() {
    if (!TakeExplorer()) return;
    const int right = 5 + chance_.Below(90);
    const int down = 8 + chance_.Below(88);
    Note("click in an explorer at " + std::to_string(right) + "%," + std::to_string(down) + "%");
    std::istringstream geometry(
        desktop_.Do("getactivewindow getwindowgeometry --shell 2>/dev/null"));
    int width = 0;
    int height = 0;
    for (std::string line; std::getline(geometry, line);) {
        if (line.starts_with("WIDTH=")) width = std::stoi(line.substr(6));
        if (line.starts_with("HEIGHT=")) height = std::stoi(line.substr(7));
    }
    desktop_.Do("getactivewindow mousemove --window %1 " + std::to_string(width * right / 100) +
                " " + std::to_string(height * down / 100) + " click 1 2>/dev/null");
}

void RandomUser::PressBox() {
    if (!TakeExplorer()) return;
    const bool isPrecise = chance_.Below(2) == 0;
    Note(isPrecise ? "press Precise" : "press Functions");
    desktop_.Do(std::string("key ") + (isPrecise ? "alt+p" : "alt+f") + " sleep 0.2");
}

void RandomUser::ExploreOn() {
    if (!TakeExplorer()) return;
    Note("explore on");
    desktop_.Do("key ctrl+q sleep 0.2");
}

void RandomUser::CloseExplorer() {
    if (!TakeExplorer()) return;
    const bool isBox = chance_.Below(2) == 0;
    Note(isBox ? "close an explorer by its box" : "close an explorer by a key");
    if (IsInFront("Korvane Explorer")) Press(isBox ? "alt+F4" : "Escape");
}

void RandomUser::Settings() {
    if (!TakeCalc()) return;
    static const std::vector<std::string> keys = {"alt+b", "alt+u", "alt+c",
                                                  "alt+h", "alt+s", "alt+p"};
    desktop_.Do("key alt+t sleep 0.1 key x sleep 0.1 key s sleep 0.5");
    if (!IsInFront("Korvane Explorer Settings")) {
        Note("settings that did not come");
        Press("Escape");
        Press("Escape");
        return;
    }
    std::string pressed;
    for (int left = chance_.Below(4); left > 0; --left) {
        pressed += "key " +
                   keys[static_cast<std::size_t>(chance_.Below(static_cast<int>(keys.size())))] +
                   " sleep 0.2 ";
    }
    pressed += chance_.Below(2) == 0 ? "key Return" : "key Escape";
    Note("settings: " + pressed);
    desktop_.Do(pressed);
}

void RandomUser::About() {
    if (!TakeCalc()) return;
    Note("about");
    desktop_.Do("key alt+t sleep 0.1 key x sleep 0.1 key a sleep 0.3");
}

void RandomUser::EditAndExplore() {
    if (!TakeCalc()) return;
    Note("explore while editing");
    desktop_.Do("key F2 sleep 0.1 key ctrl+q sleep 0.3");
}

void RandomUser::KillView() {
    const auto views = calc_.Views();
    if (views.empty()) return;
    Note("the view dies");
    ::kill(views.front(), SIGKILL);
}

}  // namespace korvane::test
