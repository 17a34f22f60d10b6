#include "bindings/qt/owners.h"

#include <QWindow>

#include "bindings/qt/x_server.h"

namespace korvane::qt {

namespace {

// The toolkit tells the window manager only when the window is shown the next time.
void TellOwner(const QWindow& window, const QWindow* owner) {
    xcb_connection_t* const server = XServer();
    if (!server) return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (owner) {
        const auto above = static_cast<xcb_window_t>(owner->winId());
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_TRANSIENT_FOR,
                            XCB_ATOM_WINDOW, 32, 1, &above);
    } else {
        xcb_delete_property(server, id, XCB_ATOM_WM_TRANSIENT_FOR);
    }
    xcb_flush(server);
}

}  // namespace

void SetOwner(QWindow& window, QWindow* owner) {
    // Windows that own each other would have the toolkit go in circles.
    for (const QWindow* above = owner; above; above = above->transientParent()) {
        if (above != &window) continue;
        owner = nullptr;
        break;
    }
    if (window.transientParent() == owner) return;
    window.setTransientParent(owner);
    if (window.isVisible()) TellOwner(window, owner);
}

}  // namespace korvane::qt
