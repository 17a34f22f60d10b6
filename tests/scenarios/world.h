// The whole add-in over a host, as a scenario finds it. What a scenario expects is
// read here, whoever the user is and whatever the host.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/addin/addin.h"
#include "bindings/scripted/scripted_platform.h"
#include "explorer/explorer_design.h"
#include "scenarios/world_host.h"
#include "support/watched_host.h"

namespace korvane::test {

// S!A1 holds =IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate, A2 =SUM(B1,C1)*2, B1 =C1-1;
// A3 and Rate lead to D1, and C1 and D1 are constants. SUM is 5 when it is evaluated;
// a host may have it give something else when it is written into a cell, so that the
// modes can be told apart.
class World {
public:
    explicit World(std::unique_ptr<WorldHost> host = MakeScriptedWorldHost());
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    // Shuts the add-in down.
    ~World();

    // Starts the add-in, once whoever shows its windows is there.
    void Open();
    // Ends it; it can be started again.
    void ShutDown();

    platform::Windows& windows() { return platform_.windows; }
    scripted::ScriptedPlatform& platform() { return platform_; }
    scripted::ScriptedScreen& screen() { return platform_.screen; }
    WorldHost& host() { return *host_; }
    // The calls to the host and to the platform's services.
    scripted::Accesses& accesses() { return *accesses_; }
    CMain& addin() { return addin_.main(); }
    SharedState& state() { return addin_.state(); }
    // The window with this place among the open ones, the oldest 1.
    platform::Form& Window(std::size_t number);
    std::size_t Count() { return windows().forms().size(); }
    // The handle that was given the focus last.
    std::int64_t Focused() const { return mirror_.focused(); }

    // See WorldHost.
    void Select(const char16_t* cell);
    std::string Here() { return host_->Here(); }
    std::string Tinted() { return host_->Tinted(); }
    std::string SumInItsCell() { return host_->SumInItsCell(); }
    // A setting as it is stored; empty for none.
    std::string Setting(const char16_t* key);

    // All that is open and selected, on one line.
    std::string Line();
    // Fails the test unless it is as if there never had been a window, but for
    // what the settings remember.
    void ExpectNothingLeft();
    // Once the add-in is shut down: what is not as it was before it started, line by
    // line; handles of the host that are still held, and windows, too.
    std::string LeftBehind();
    // As on the first day.
    void ForgetSettings() { platform_.settings.texts.clear(); }

private:
    std::unique_ptr<WorldHost> host_;
    std::shared_ptr<scripted::Accesses> accesses_ = std::make_shared<scripted::Accesses>();
    scripted::ScriptedPlatform platform_{accesses_};
    WatchedHost watched_{accesses_};
    platform::WindowsMirror mirror_;
    Addin addin_;
    std::string document_;  // as it was before the add-in started
    std::string desk_;
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
