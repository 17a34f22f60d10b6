// Where a user's commands enter the system.
#pragma once

#include <memory>
#include <vector>

#include "host/addin/command_windows.h"
#include "host/addin/commands.h"

namespace korvane {

struct SharedState;

// Every member reports its own failure and never raises; before start-up and
// after shut-down none does anything.
class MEntryPoints : public Commands {
public:
    // Both outlive the entry points.
    MEntryPoints(SharedState& state, CommandWindows& windows) : state_(state), windows_(windows) {}
    MEntryPoints(const MEntryPoints&) = delete;
    MEntryPoints& operator=(const MEntryPoints&) = delete;
    // Closes the explorers that are open.
    ~MEntryPoints() override;

    void EP_Explore(std::int64_t hwndParent) override;
    void EP_GoBack() override;
    void EP_Options() override;
    void ShowHelp(std::int32_t topic) override;
    void ShowAbout() override;

private:
    bool bCellsAreSelected();
    void OpenExplorer(std::int64_t hwndParent);
    void ShowModal(const std::shared_ptr<CommandWindow>& window);

    SharedState& state_;
    CommandWindows& windows_;
    // Each is let go of when its window was closed.
    std::vector<std::shared_ptr<ExplorerWindow>> explorers_;
};

}  // namespace korvane
