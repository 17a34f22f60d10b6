// The window, of whatever program, that has the keyboard.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QTimer>
#include <functional>

namespace korvane::qt {

// Hears on X11 when the desktop has given the keyboard to another window. Elsewhere it
// hears nothing.
class ActiveWindow : public QAbstractNativeEventFilter {
public:
    // `changed` is called with the title of the window that has it (in any encoding) soon
    // after: a keyboard that goes to and fro comes to rest first.
    explicit ActiveWindow(std::function<void(const QByteArray& title)> changed);
    ~ActiveWindow() override;
    ActiveWindow(const ActiveWindow&) = delete;
    ActiveWindow& operator=(const ActiveWindow&) = delete;

    // Has `changed` called soon whether there is a change or not.
    void Look();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    std::function<void(const QByteArray& title)> changed_;
    quint32 atom_ = 0;  // _NET_ACTIVE_WINDOW
    QTimer soon_;
};

}  // namespace korvane::qt
