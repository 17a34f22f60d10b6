// The whole add-in, wired: one shared state, its commands, their windows.
#pragma once

#include <cstdint>
#include <functional>

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
          entryPoints_(state_, windows_),
          commands_(*this),
          main_(state_, commands_) {}
    Addin(const Addin&) = delete;
    Addin& operator=(const Addin&) = delete;

    // What the host calls.
    CMain& main() { return main_; }
    Commands& commands() { return commands_; }
    SharedState& state() { return state_; }

    // What the program has to see to first.
    enum class Kind { kCells, kWindow, kHelp };
    // Asked before each command; false: it is not run. Empty: all run.
    std::function<bool(Kind kind)> mayRun;

private:
    // The entry points, for those that may run.
    class AskedCommands : public Commands {
    public:
        explicit AskedCommands(Addin& addin) : addin_(addin) {}
        void EP_Explore(std::int64_t hwndParent) override;
        void EP_GoBack() override;
        void EP_Options() override;
        void ShowHelp(std::int32_t topic) override;
        void ShowAbout() override;

    private:
        bool May(Kind kind) const { return !addin_.mayRun || addin_.mayRun(kind); }

        Addin& addin_;
    };

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
    MEntryPoints entryPoints_;
    AskedCommands commands_;
    CMain main_;
};

}  // namespace korvane
