// The whole add-in, wired: one shared state, its commands, their windows.
#pragma once

#include "host/addin/command_windows.h"
#include "host/addin/entry_points.h"
#include "host/addin/main.h"
#include "host/addin/shared_state.h"

namespace korvane {

class Addin {
public:
    // `platform` outlives the add-in. Nothing runs before main().AutoOpen.
    explicit Addin(platform::Platform& platform)
        : state_(platform),
          windows_(*this),
          commands_(state_, windows_),
          main_(state_, commands_) {}
    Addin(const Addin&) = delete;
    Addin& operator=(const Addin&) = delete;

    // What the host calls.
    CMain& main() { return main_; }
    MEntryPoints& commands() { return commands_; }
    SharedState& state() { return state_; }

private:
    // The real windows behind the commands.
    class AddinWindows : public CommandWindows {
    public:
        explicit AddinWindows(Addin& addin) : addin_(addin) {}
        std::shared_ptr<ExplorerWindow> NewExplorer() override;
        std::shared_ptr<CommandWindow> NewOptions() override;
        std::shared_ptr<CommandWindow> NewAbout() override;
        void ShowHelp(std::int32_t topic) override;
        void CheckUpdates(bool bManual) override;

    private:
        Addin& addin_;
    };

    SharedState state_;
    AddinWindows windows_;
    MEntryPoints commands_;
    CMain main_;
};

}  // namespace korvane
