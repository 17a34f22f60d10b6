#include "host/addin/app_event_handler.h"

#include "host/addin/entry_point.h"

namespace korvane {

CAppEventHandler::CAppEventHandler(host::Application& mxlApp, CGlobalOptions& options,
                                   MErrorHandler& errors)
    : options_(options), errors_(errors), mxlApp_(mxlApp.Connect(*this)) {}

void CAppEventHandler::WindowActivate(const host::WorkbookPtr& /*workbook*/) {
    AtEntryPoint(errors_, u"CAppEventHandler", u"mxlApp_WindowActivate", [this] {
        // A change of the shortcuts can give a key back that is still one of them.
        if (!bHooked_ || options_.bKeysReleased()) bHooked_ = options_.bHookKeys();
    });
}

}  // namespace korvane
