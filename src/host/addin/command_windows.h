// The windows that commands open, as the commands see them. The windows
// themselves live in their own rooms.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/window/form.h"

namespace korvane {

// A loaded window. Letting go of it closes it.
class CommandWindow {
public:
    virtual ~CommandWindow() = default;
    virtual platform::Form& form() = 0;
};

class ExplorerWindow : public CommandWindow {
public:
    // The window from which this one was opened; 0 for the host.
    virtual void SethwndParent(std::int64_t hwnd) = 0;
    // Explores the active cell and fills the window; false when that failed,
    // which is reported.
    virtual bool bExplore() = 0;
};

// Makes the windows. Each member raises when the window cannot be made.
class CommandWindows {
public:
    virtual ~CommandWindows() = default;
    virtual std::shared_ptr<ExplorerWindow> NewExplorer() = 0;
    virtual std::shared_ptr<CommandWindow> NewOptions() = 0;
    virtual std::shared_ptr<CommandWindow> NewAbout() = 0;
    // Opens the help file at a topic of its map; 0 for its start page.
    virtual void ShowHelp(std::int32_t topic) = 0;
    // Looks for a newer version; reports its own failures.
    virtual void CheckUpdates(bool bManual) = 0;
};

}  // namespace korvane
