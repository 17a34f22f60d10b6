#include "bindings/view_link/held_events.h"

#include <utility>

namespace korvane::view_link {
namespace {

using platform::Event;
using platform::Mouse;

// A key that is held down for minutes.
constexpr std::size_t kMost = 10'000;

template <class... Kinds>
bool IsOneOf(const Event& event) {
    return (std::holds_alternative<Kinds>(event) || ...);
}

}  // namespace

bool HeldEvents::IsOfWindowAlone(const Event& event) {
    return IsOneOf<platform::FormPlaced, platform::FormActivated, platform::ControlFocused,
                   platform::Scrolled, platform::ColumnResized, platform::NodeToggled>(event);
}

// Only where the mouse has got to counts, and it moves often.
bool HeldEvents::Replaces(const Event& event) const {
    const auto* now = std::get_if<Mouse>(&event);
    const auto* last = events_.empty() ? nullptr : std::get_if<Mouse>(&events_.back());
    return now && last && now->action == platform::MouseAction::kMove &&
           last->action == platform::MouseAction::kMove && now->window == last->window &&
           now->control == last->control && now->button == last->button &&
           now->shift == last->shift;
}

bool HeldEvents::Add(const Event& event) {
    if (Replaces(event)) {
        events_.back() = event;
        return true;
    }
    if (events_.size() >= kMost) return false;
    events_.push_back(event);
    return true;
}

Event HeldEvents::Take() {
    Event first = std::move(events_.front());
    events_.pop_front();
    return first;
}

}  // namespace korvane::view_link
