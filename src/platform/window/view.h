// Whatever shows the windows to somebody: a toolkit, a process far away, a test.
#pragma once

#include "platform/window/change.h"
#include "platform/window/event.h"

namespace korvane::platform {

class View {
public:
    virtual ~View() = default;
    // A change of the model, already made. Comes within whatever changed it: a
    // view keeps it or draws it, and brings no event before it has returned.
    // Must not throw.
    virtual void Apply(const Change& change) = 0;
    // An event that the model takes next, whichever view brought it. For views
    // that keep a record; others need not hear.
    virtual void Hear(const Event& /*event*/) {}
};

}  // namespace korvane::platform
