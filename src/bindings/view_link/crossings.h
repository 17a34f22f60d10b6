// Changes and events that may have passed each other on the way.
#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "platform/window/change.h"
#include "platform/window/event.h"

namespace korvane::view_link {

// A view shows its user's doing at once and is not told it again. When the model
// wrote to the same control meanwhile, the view applies that write behind the
// user's doing although the model made it before; so the view then has to be
// told its own doing after all. This knows the controls for which that may be
// so: a change is settled when the view has answered a ping that followed it.
class Crossings {
public:
    // A change goes out; the ping `ping` will follow it.
    void Add(const platform::Change& change, std::int32_t ping);
    // The view answered the ping.
    void Settle(std::int32_t ping);
    bool empty() const { return open_.empty(); }
    // Whether the view sent the event before it knew of a change to the same.
    bool Crosses(const platform::Event& event) const;

private:
    using Key = std::pair<platform::WindowId, platform::ControlId>;

    std::map<Key, std::int32_t> open_;  // with the ping that settles it
    std::map<Key, std::int32_t>::iterator last_ = open_.end();
};

}  // namespace korvane::view_link
