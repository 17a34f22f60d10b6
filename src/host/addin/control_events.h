// The sink of clicks on the system's buttons.
#pragma once

#include <memory>

#include "host/application.h"
#include "host/command_bars.h"

namespace korvane {

class Commands;
class MErrorHandler;

// Holds one button as its event source: the host raises the click of every
// control that carries the same tag.
class CControlEvents : public host::CommandBarButtonEvents {
public:
    // The references outlive the sink. Holds no button before Bind.
    CControlEvents(host::Application& application, Commands& commands, MErrorHandler& errors)
        : application_(application), commands_(commands), errors_(errors) {}
    CControlEvents(const CControlEvents&) = delete;
    CControlEvents& operator=(const CControlEvents&) = delete;

    // Holds the first control that carries the system's tag, instead of any held
    // before; none where there is none (a host with a ribbon). To be called
    // again when the controls were built anew: those that were removed raise
    // nothing more. Raises what the host raises.
    void Bind();

    // Runs the button's command and keeps the host from doing anything else. A
    // click while a command runs (a dialog is open) does nothing.
    void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override;

private:
    host::Application& application_;
    Commands& commands_;
    MErrorHandler& errors_;
    std::shared_ptr<bool> bBusy_ = std::make_shared<bool>(false);
    host::SubscriptionPtr mctlButton_;  // the event source
};

}  // namespace korvane
