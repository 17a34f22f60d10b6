#include "bindings/qt/lost_windows.h"

#include <utility>

namespace korvane::qt {

LostWindows::LostWindows(std::function<void(quintptr window)> onLost)
    : onLost_(std::move(onLost)) {}

// What a program has sent, and not the server, has a further bit and says nothing.
void LostWindows::Hear(const xcb_generic_event_t& event) {
    if (event.response_type != XCB_DESTROY_NOTIFY) return;
    onLost_(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
}

}  // namespace korvane::qt
