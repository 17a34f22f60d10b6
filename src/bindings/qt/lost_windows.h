// Windows that somebody else takes away.
#pragma once

#include <functional>

#include "bindings/qt/x_server.h"

namespace korvane::qt {

// Hears when the window system's part of a window is destroyed by another
// program, which the toolkit does not tell on X11. Elsewhere it hears nothing.
class LostWindows : public XEvents {
public:
    // `onLost` is called with the number of any window that was destroyed, our own
    // doing included: by then that number is nobody's any more.
    explicit LostWindows(std::function<void(quintptr window)> onLost);

private:
    void Hear(const xcb_generic_event_t& event) override;

    std::function<void(quintptr window)> onLost_;
};

}  // namespace korvane::qt
