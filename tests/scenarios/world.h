// The whole add-in over a scripted host, as a scenario finds it. What a scenario
// expects is read here, whoever the user is.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/addin/addin.h"
#include "bindings/scripted/scripted_platform.h"
#include "explorer/explorer_design.h"
#include "support/exploring.h"

namespace korvane::test {

// S!A1 holds =IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate, A2 =SUM(B1,C1)*2, B1 =C1-1;
// A3 and Rate lead to D1, and C1 and D1 are constants. SUM is 5 when it is evaluated
// and 6 when it is written into a cell, so that the modes can be told apart.
class World {
public:
    World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    // Shuts the add-in down; nothing of the host may be held then.
    ~World();

    // Starts the add-in, once whoever shows its windows is there.
    void Open();

    platform::Windows& windows() { return platform_.windows; }
    scripted::ScriptedScreen& screen() { return platform_.screen; }
    CMain& addin() { return addin_.main(); }
    // The window with this place among the open ones, the oldest 1.
    platform::Form& Window(std::size_t number);
    std::size_t Count() { return windows().forms().size(); }
    // The handle that was given the focus last.
    std::int64_t Focused() const { return mirror_.focused(); }

    // What the user selects in the host itself.
    void Select(const char16_t* cell);
    // The host's active cell.
    std::string Here();
    // The cells of another colour than they had, with blanks between them.
    std::string Tinted();
    // A setting as it is stored; empty for none.
    std::string Setting(const char16_t* key);

    // All that is open and selected, on one line.
    std::string Line();
    // Fails the test unless it is as if there never had been a window, but for
    // what the settings remember.
    void ExpectNothingLeft();

private:
    std::unique_ptr<scripted::ScriptedHost> host_;
    scripted::ScriptedPlatform platform_;
    platform::WindowsMirror mirror_;
    Addin addin_;
    int handles_ = 0;  // that the add-in itself holds
};

// An explorer window's parts.
platform::TreeView& TreeOf(platform::Form& window);
platform::RichText& PaneOf(platform::Form& window);
platform::CheckBox& FunctionsOf(platform::Form& window);
platform::CheckBox& PreciseOf(platform::Form& window);
// The selected row's text; empty for none.
std::string RowOf(platform::Form& window);
// The marked characters; empty for none.
std::string MarkedIn(platform::Form& window);
// The number of the first row with this text; fails the test when there is none.
std::int32_t NodeWith(platform::Form& window, const char16_t* text);
// The rows whose ancestors all are expanded, from the top to the bottom.
std::vector<std::int32_t> VisibleRows(platform::Form& window);

}  // namespace korvane::test
