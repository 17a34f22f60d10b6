// Windows that somebody else takes away.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QtGlobal>
#include <functional>

namespace korvane::qt {

// Hears when the window system's part of a window is destroyed by another
// program, which the toolkit does not tell on X11. Elsewhere it hears nothing.
class LostWindows : public QAbstractNativeEventFilter {
public:
    // `onLost` is called with the number of any window that was destroyed, our own
    // doing included: by then that number is nobody's any more.
    explicit LostWindows(std::function<void(quintptr window)> onLost);
    ~LostWindows() override;
    LostWindows(const LostWindows&) = delete;
    LostWindows& operator=(const LostWindows&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    std::function<void(quintptr window)> onLost_;
};

}  // namespace korvane::qt
