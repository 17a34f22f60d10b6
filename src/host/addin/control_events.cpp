#include "host/addin/control_events.h"

#include <memory>

#include "host/addin/commands.h"
#include "host/addin/controls.h"
#include "host/addin/entry_point.h"

namespace korvane {

void CControlEvents::Bind() {
    mctlButton_.reset();
    const host::CommandBarsPtr bars = application_.CommandBars();
    if (!bars) return;
    const auto control = bars->FindControl(kButtonTag);
    const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(control);
    if (button) mctlButton_ = button->Connect(*this);
}

void CControlEvents::Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) {
    // A shut-down within the command ends this object with it.
    const std::shared_ptr<bool> busy = bBusy_;
    if (*busy) return;
    *busy = true;
    AtEntryPoint(errors_, u"CControlEvents", u"mctlButton_Click", [&] {
        cancelDefault = true;
        Dispatch(commands_, control->Parameter());
    });
    *busy = false;
}

}  // namespace korvane
