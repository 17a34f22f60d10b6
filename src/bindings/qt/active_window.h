// The window, of whatever program, that has the keyboard.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QTimer>
#include <functional>
#include <optional>

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
class ActiveWindow : public QAbstractNativeEventFilter {
public:
    // Null when none has the keyboard, or one that is gone: a desktop may lose track of it.
    using Changed = std::function<void(const std::optional<KeyboardHolder>& holder)>;
    // `changed` is called soon after: a keyboard that goes to and fro comes to rest first.
    explicit ActiveWindow(Changed changed);
    ~ActiveWindow() override;
    ActiveWindow(const ActiveWindow&) = delete;
    ActiveWindow& operator=(const ActiveWindow&) = delete;

    // Has `changed` called soon whether there is a change or not.
    void Look();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    Changed changed_;
    quint32 atom_ = 0;  // _NET_ACTIVE_WINDOW
    QTimer soon_;
};

// The process whose window it is; 0 when that is not known, and but on X11.
quint32 ProcessOf(const QWindow& window);

// Asks the desktop to give the keyboard to a window of any program, as a task bar does:
// the toolkit only asks for windows that it has shown itself. Nothing but on X11.
void ActivateAny(const QWindow& window);

}  // namespace korvane::qt
