// The window, of whatever program, that has the keyboard.
#pragma once

#include <QByteArray>
#include <QTimer>
#include <functional>
#include <optional>

#include "bindings/qt/x_server.h"

class QWindow;

namespace korvane::qt {

// A window on X11, of any program.
struct KeyboardHolder {
    quint32 window = 0;
    QByteArray title;       // in any encoding
    quint32 process = 0;    // 0 when it does not tell
    bool hasOwner = false;  // it stays above another one
};

// Hears on X11 when the desktop has given the keyboard to another window. Elsewhere it
// hears nothing.
class ActiveWindow : public XEvents {
public:
    // `changed` is called soon after: a keyboard that goes to and fro comes to rest first.
    explicit ActiveWindow(std::function<void()> changed);

    // Has `changed` called soon whether there is a change or not.
    void Look();
    // Asks the server. Null when none has the keyboard, or one that is gone: a desktop may
    // lose track of it.
    std::optional<KeyboardHolder> Holder() const;

private:
    void Hear(const xcb_generic_event_t& event) override;

    xcb_atom_t atom_ = XCB_ATOM_NONE;  // _NET_ACTIVE_WINDOW
    QTimer soon_;
};

// The process whose window it is; 0 when that is not known, and but on X11.
quint32 ProcessOf(const QWindow& window);

// Asks the desktop to give the keyboard to a window of any program, as a task bar does:
// the toolkit only asks for windows that it has shown itself. Nothing but on X11.
void ActivateAny(const QWindow& window);

}  // namespace korvane::qt
