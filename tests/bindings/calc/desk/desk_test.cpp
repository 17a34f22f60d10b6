// Menus, toolbar, keys and windows as the user meets them.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <thread>

#include "desk_office_fixture.h"

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

class CalcDesk : public DeskOfficeTest {
protected:
    void Open() {
        ASSERT_EQ(Ask("open"), "done");
        ASSERT_EQ(Ask("build"), "done");
    }
    // The files of the profile that speak of the add-in.
    std::string InProfile() const {
        return OutputOf("grep -rilF korvane " + (folder_ / "profile/user").string());
    }
    void Quit() {
        EXPECT_EQ(Ask("quit"), "done");
        ExpectOrderlyEnd();
    }
    void ExpectOrderlyEnd() {
        const int status = office_->WaitForEnd();
        EXPECT_TRUE(WIFEXITED(status)) << status;
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
};

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

TEST_F(CalcDesk, EntriesStandWhereTheyBelongAndLeaveNothing) {
    const std::string before = Ask("settings");
    ASSERT_TRUE(Holds(before, ".uno:AuditMenu"));
    Open();
    const std::string bars = Ask("bars");
    EXPECT_TRUE(Holds(bars,
                      "|  &Options... 0|  Korvane E&xplorer 1"
                      "|   &Settings... 1 kvxButton kvxOptions"
                      "|   &Documentation 1 kvxButton kvxDocumentation"
                      "|   &About... 1 kvxButton kvxAbout| &Window 0|"))
        << bars;
    EXPECT_TRUE(Holds(bars, "| &Tools 30007|")) << bars;
    EXPECT_TRUE(Holds(bars, "|  &Detective 30028|   Trace &Precedents 0|")) << bars;
    EXPECT_TRUE(
        Holds(bars, "|   Korvane E&xplorer 1 kvxButton kvxExplore|   &Mark Invalid Data 0|  S"))
        << bars;
    EXPECT_TRUE(bars.ends_with("| Korvane E&xplorer 1 kvxButton kvxExplore|")) << bars;
    const std::string settings = Ask("settings");
    // Each with a separator before it.
    EXPECT_EQ(Count(settings, "Type=1;"), Count(before, "Type=1;") + 3);
    EXPECT_EQ(Ask("pictures"), "16x16 16x16 24x24 24x24 32x32 32x32 ");

    EXPECT_EQ(Ask("remove"), "done");
    EXPECT_EQ(office_->AskUntil("settings", [&](const auto& now) { return now == before; }),
              before);
    // And over again, as when a setting is changed.
    EXPECT_EQ(Ask("build"), "done");
    EXPECT_EQ(Ask("bars"), bars);
    EXPECT_EQ(Count(Ask("settings"), "Type=1;"), Count(settings, "Type=1;"));
    EXPECT_EQ(Ask("close"), "done");
    EXPECT_EQ(Ask("settings"), before);
}

TEST_F(CalcDesk, TheMenuRunsItsCommands) {
    Open();
    Press("alt+t");
    Press("x");
    Press("s");
    EXPECT_EQ(office_->Log("kvxOptions"), "click kvxOptions|");
    Press("alt+t x a");
    EXPECT_EQ(office_->Log("kvxAbout"), "click kvxAbout|");
    Press("alt+t d x");
    EXPECT_EQ(office_->Log("kvxExplore"), "click kvxExplore|");
}

// How many colours there are around a place on the screen.
int ColoursAt(const std::string& picture, int x, int y) {
    return std::atoi(OutputOf("convert " + picture + " -crop 16x16+" + std::to_string(x - 8) + "+" +
                              std::to_string(y - 8) + " -format %k info:")
                         .c_str());
}

TEST_F(CalcDesk, TheButtonShowsItsPictureAndRunsItsCommand) {
    const std::string without = desktop_->Picture("calc_no_button");
    Open();
    const std::string where = office_->AskUntil(
        "where Korvane Explorer", [](const auto& answer) { return answer != "nowhere"; });
    std::istringstream place(where);
    int x = 0;
    int y = 0;
    ASSERT_TRUE(place >> x >> y) << where;
    // The bare toolbar is a shade for each line at most.
    EXPECT_LE(ColoursAt(without, x, y), 16);
    int colours = 0;
    for (int k = 0; k < 200 && colours <= 32; ++k) {
        std::this_thread::sleep_for(20ms);
        colours = ColoursAt(desktop_->Picture("calc_button"), x, y);
    }
    EXPECT_GT(colours, 32);
    desktop_->Do("mousemove " + where + " click 1");
    EXPECT_EQ(office_->Log("click"), "click kvxExplore|");

    EXPECT_EQ(Ask("hide"), "done");
    EXPECT_EQ(office_->AskUntil("where Korvane Explorer",
                                [](const auto& answer) { return answer == "nowhere"; }),
              "nowhere");
    EXPECT_EQ(Ask("show"), "done");
    EXPECT_EQ(office_->AskUntil("where Korvane Explorer",
                                [&](const auto& answer) { return answer == where; }),
              where);
    // A window that comes later has it too.
    EXPECT_EQ(Ask("window"), "done");
    EXPECT_EQ(office_->AskUntil("active", [](const auto& name) { return name == "Untitled 2"; }),
              "Untitled 2");
    EXPECT_NE(office_->AskUntil("where Korvane Explorer",
                                [](const auto& answer) { return answer != "nowhere"; }),
              "nowhere");
}

TEST_F(CalcDesk, WhatCannotBeIsRefused) {
    ASSERT_EQ(Ask("open"), "done");
    const std::string before = Ask("settings");
    const std::string gone = "error: The control was deleted";
    EXPECT_EQ(Ask("try no bar"), "error: No such command bar");
    EXPECT_EQ(Ask("try item 0"), "error: No such control");
    EXPECT_EQ(Ask("try item beyond"), "error: No such control");
    EXPECT_EQ(Ask("try own"), "error: Calc's own menus and buttons stay as they are");
    EXPECT_EQ(Ask("try remove"), "error: Calc's own menus and buttons stay as they are");
    EXPECT_EQ(Ask("try submenu"), "error: Only a submenu has controls");
    EXPECT_EQ(Ask("try built-in"), "error: Only buttons and submenus of one's own can be added");
    EXPECT_EQ(Ask("try place"), "error: No such place");
    EXPECT_EQ(Ask("try permanent"), "error: A control cannot be kept when Calc closes");
    EXPECT_EQ(Ask("try deleted"), gone);
    EXPECT_EQ(Ask("try deleted sink"), gone);
    EXPECT_EQ(Ask("try with its menu"), gone);
    EXPECT_EQ(Ask("try menu deleted"), "error: The menu or button is no longer there");
    EXPECT_EQ(Ask("try no picture"), "error: The picture of the button cannot be read");
    EXPECT_EQ(Ask("try closed"), "error: The menu or button is no longer there");
    EXPECT_EQ(Ask("settings"), before);
    for (const char* key : {"q", "^qq", "^", "^é"}) {
        EXPECT_TRUE(
            Ask(std::string("bind ") + key + " KorvaneExplore").ends_with("cannot be bound"));
    }
}

TEST_F(CalcDesk, KeysRunCommandsAndAreGivenBack) {
    ASSERT_EQ(Ask("open"), "done");
    const std::string before = Ask("keys");
    // Free ones, Calc's own, some of the whole office's, a menu's access key, and
    // at the end those of commands that have further keys.
    const std::vector<std::pair<std::string, std::string>> keys = {
        {"^q", "ctrl+q"},       {"%q", "alt+q"},  {"^%a", "ctrl+alt+a"}, {"^+z", "ctrl+shift+z"},
        {"^W", "ctrl+shift+w"}, {"%5", "alt+5"},  {"^c", "ctrl+c"},      {"%f", "alt+f"},
        {"^z", "ctrl+z"},       {"^d", "ctrl+d"}, {"^1", "ctrl+1"}};
    for (const auto& [key, press] : keys) {
        EXPECT_EQ(Ask("bind " + key + " KorvaneExplorerGoBack"), "done") << key;
        EXPECT_EQ(Ask("bind " + key + " KorvaneExplore"), "done") << key;
        Press(press);
        EXPECT_EQ(office_->Log("key"), "key KorvaneExplore|") << key;
    }
    // Within a cell that is being edited too; the edit goes on.
    desktop_->Do("type 12");
    Press("ctrl+q");
    EXPECT_EQ(office_->Log("key"), "key KorvaneExplore|");
    Press("Escape");
    // Giving one back leaves the others.
    EXPECT_EQ(Ask("release ^q"), "done");
    Press("alt+q");
    EXPECT_EQ(office_->Log("key"), "key KorvaneExplore|");
    for (const auto& [key, press] : keys) EXPECT_EQ(Ask("release " + key), "done") << key;
    EXPECT_EQ(Ask("release ^q"), "done");
    EXPECT_EQ(Ask("keys"), before);
    for (const auto& [key, press] : keys) {
        EXPECT_EQ(Ask("bind " + key + " KorvaneExplore"), "done") << key;
    }
    EXPECT_EQ(Ask("close"), "done");
    EXPECT_EQ(Ask("keys"), before);
    // The office's own Ctrl+Q.
    Press("ctrl+q");
    ExpectOrderlyEnd();
    EXPECT_EQ(InProfile(), "");
}

TEST_F(CalcDesk, ACommandThatFailsOrIsGoneHarmsNothing) {
    Open();
    EXPECT_EQ(Ask("bind ^q Fails"), "done");
    Press("ctrl+q");
    EXPECT_EQ(office_->Log("fails"), "fails|");
    EXPECT_EQ(Ask("bind ^q Unknown"), "done");
    EXPECT_EQ(Ask("bind %q KorvaneExplore"), "done");
    Press("ctrl+q alt+q");
    EXPECT_EQ(office_->Log("key"), "key KorvaneExplore|");
    EXPECT_EQ(Ask("vanish"), "done");
    Press("alt+q");
    EXPECT_EQ(Ask("close"), "done");
    EXPECT_EQ(Ask("log"), "");
    EXPECT_EQ(Ask("ready"), "yes");
}

TEST_F(CalcDesk, ActivatingAWindowIsTold) {
    ASSERT_EQ(Ask("open"), "done");
    Ask("log");
    ASSERT_EQ(Ask("window"), "done");
    EXPECT_TRUE(Holds(office_->Log("activate Untitled 2|"), "activate Untitled 2|"));
    desktop_->Do("search --onlyvisible --name 'Untitled 1' windowactivate --sync");
    EXPECT_TRUE(Holds(office_->Log("activate Untitled 1|"), "activate Untitled 1|"));
    EXPECT_EQ(Ask("close"), "done");
    Ask("log");
    desktop_->Do("search --onlyvisible --name 'Untitled 2' windowactivate --sync");
    EXPECT_EQ(office_->AskUntil("active", [](const auto& name) { return name == "Untitled 2"; }),
              "Untitled 2");
    EXPECT_EQ(Ask("log"), "");
}

TEST_F(CalcDesk, NothingReachesTheProfileThoughTheEntriesAreStillThere) {
    Open();
    EXPECT_EQ(Ask("bind ^q KorvaneExplore"), "done");
    Quit();
    EXPECT_EQ(InProfile(), "");
    Start();
    Open();
    EXPECT_EQ(Ask("bind ^q KorvaneExplore"), "done");
    office_.reset();  // without time to clear up
    EXPECT_EQ(InProfile(), "");
}

TEST_F(CalcDesk, WhatTheUserStoresWithTheEntriesIsStoredWithoutThem) {
    Open();
    EXPECT_EQ(Ask("bind ^q KorvaneExplore"), "done");
    EXPECT_EQ(Ask("bind ^c KorvaneExplore"), "done");
    EXPECT_EQ(Ask("store"), "done");
    ASSERT_NE(InProfile(), "");
    EXPECT_EQ(Ask("close"), "done");
    Quit();
    EXPECT_EQ(InProfile(), "");
}

TEST_F(CalcDesk, WhatAnEarlierRunLeftIsCleared) {
    const std::string before = Ask("settings");
    const std::string keys = Ask("keys");
    Open();
    EXPECT_EQ(Ask("bind ^q KorvaneExplore"), "done");
    EXPECT_EQ(Ask("store"), "done");
    // The office writes its registry when it finds the time.
    for (int k = 0; k < 1000 && !Holds(InProfile(), "registrymodifications"); ++k) {
        std::this_thread::sleep_for(20ms);
    }
    Start();  // the one before had no time to clear up
    ASSERT_TRUE(Holds(Ask("settings"), "org.korvane.addin"));
    ASSERT_TRUE(Holds(Ask("keys"), "org.korvane.addin"));
    Open();
    EXPECT_EQ(Count(Ask("bars"), "Korvane E&xplorer"), 3U);
    EXPECT_EQ(Ask("bind ^q KorvaneExplore"), "done");
    EXPECT_EQ(Ask("close"), "done");
    EXPECT_FALSE(Holds(Ask("settings"), "org.korvane.addin"));
    EXPECT_EQ(Ask("keys"), keys);
    Quit();
    EXPECT_EQ(InProfile(), "");
}

}  // namespace
}  // namespace korvane::test
