// What the user does in windows while the host has no time for it.
#pragma once

#include <deque>

#include "platform/window/event.h"

namespace korvane::view_link {

class HeldEvents {
public:
    // Whether the event is about the window alone, its place or what is seen of it: the
    // host hears nothing of that, so it never has to be held.
    static bool IsOfWindowAlone(const platform::Event& event);

    // Keeps the event behind the others. False when there are more than a user can be
    // the cause of.
    bool Add(const platform::Event& event);
    // Takes the first one out; there must be one.
    platform::Event Take();
    bool empty() const { return events_.empty(); }
    void Clear() { events_.clear(); }

private:
    bool Replaces(const platform::Event& event) const;

    std::deque<platform::Event> events_;
};

}  // namespace korvane::view_link
