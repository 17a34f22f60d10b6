// The sink of the host's own events.
#pragma once

#include "host/application.h"
#include "settings/global_options.h"

namespace korvane {

class MErrorHandler;

// Binds the shortcuts when a window is activated, until it succeeded once: at
// the host's start, with no workbook open, the host refuses them.
class CAppEventHandler : public host::ApplicationEvents {
public:
    // Hears of the application's events from now until its end. The references
    // outlive it. Raises when the host cannot be listened to.
    CAppEventHandler(host::Application& mxlApp, CGlobalOptions& options, MErrorHandler& errors);
    CAppEventHandler(const CAppEventHandler&) = delete;
    CAppEventHandler& operator=(const CAppEventHandler&) = delete;

    void WindowActivate(const host::WorkbookPtr& workbook) override;

private:
    CGlobalOptions& options_;
    MErrorHandler& errors_;
    bool bHooked_ = false;
    host::SubscriptionPtr mxlApp_;  // the event source; last, so that it goes first
};

}  // namespace korvane
