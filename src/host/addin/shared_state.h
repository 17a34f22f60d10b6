// What start-up makes and every part of the add-in shares.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "host/addin/app_event_handler.h"
#include "host/addin/control_events.h"
#include "host/addin/error_handler.h"
#include "host/application.h"
#include "host/ribbon.h"
#include "host/workbook.h"
#include "navigation/history.h"
#include "navigation/tints.h"
#include "platform/platform.h"
#include "settings/global_options.h"

namespace korvane {

class CMain;

// One per host process: made by the program that wires the add-in, filled by
// start-up, emptied by shut-down. `platform` outlives it.
struct SharedState {
    explicit SharedState(platform::Platform& services)
        : platform(services),
          errors(services.files, services.messageBoxes, services.clock, services.version,
                 application, addinFolder) {
        errors.onIdle = [this] {
            if (releaseDue_) Release();
        };
    }
    SharedState(const SharedState&) = delete;
    SharedState& operator=(const SharedState&) = delete;
    ~SharedState() { Release(); }

    // Start-up is complete and shut-down has not begun. Commands do nothing
    // otherwise, and whatever waited for the user asks again.
    bool IsRunning() const { return running; }

    // Lets go of the host's objects, in the order in which they need each other;
    // the ribbon's stays until the add-in is unloaded. While an entry point runs
    // (shut-down was called while a command waits for its user) they stay until
    // it has ended.
    void ReleaseWhenIdle();
    bool IsReleaseDue() const { return releaseDue_; }

    platform::Platform& platform;

    // The CMain whose AutoOpen started the add-in; null before and after.
    const CMain* startedBy = nullptr;
    bool running = false;

    host::ApplicationPtr application;
    host::WorkbookPtr workbook;  // the add-in's own
    host::IRibbonUIPtr ribbon;
    bool hostHasRibbon = false;   // version 12 or more: no menus and toolbar buttons
    std::int64_t hostWindow = 0;  // owner of every window of the system
    std::u16string addinFolder;   // ends in "\"; empty until it is known
    std::u16string helpFile;
    bool hostEventsOn = true;
    bool shuttingDown = false;
    bool updatesChecked = false;  // the first Explore looks for a newer version
    int lExplorerCount = 0;       // explorer windows that are open
    CTints tints;                 // of all explorers
    std::minstd_rand random;      // seeded from the clock at start-up

    std::unique_ptr<CGlobalOptions> options;
    std::unique_ptr<CHistory> history;
    std::unique_ptr<CControlEvents> controlEvents;
    std::unique_ptr<CAppEventHandler> applicationEvents;

    MErrorHandler errors;

private:
    void Release();

    bool releaseDue_ = false;
};

}  // namespace korvane
