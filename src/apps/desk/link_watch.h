// Drives the link to the view from the office's own loop.
#pragma once

#include <poll.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "bindings/calc/main_thread.h"
#include "bindings/view_link/view_link.h"

namespace korvane::desk {

// A thread waits for the link's descriptor and its time-outs, and has the rest
// done on the main thread: it touches neither the link nor the office itself.
// All members are for the main thread.
class LinkWatch {
public:
    // The link outlives the watch. Takes the link's onQueued.
    LinkWatch(calc::MainThread thread, view_link::ViewLink& link);
    // Ends the thread.
    ~LinkWatch();
    LinkWatch(const LinkWatch&) = delete;
    LinkWatch& operator=(const LinkWatch&) = delete;

    // Called after everything that came from the view, or did not come in time.
    std::function<void()> onTurn;

    // Sends what waits to be sent and watches the link as it is now: after
    // anything that was done with it, and before the main thread waits.
    void Update();

private:
    struct Shared;

    void Turn();
    void TurnSoon();
    static void Watch(const std::shared_ptr<Shared>& shared);

    calc::MainThread thread_;
    view_link::ViewLink& link_;
    std::shared_ptr<Shared> shared_;
    std::thread waiter_;
};

}  // namespace korvane::desk
