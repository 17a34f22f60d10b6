// A program's loop around the link to its view.
#pragma once

#include <functional>
#include <map>

#include "bindings/view_link/view_link.h"
#include "platform/modal.h"

namespace korvane::view_link {

// The modal loop of windows that such a view shows, and the main loop of a
// program that has no other. The view's answers are watched meanwhile.
class Pump : public platform::ModalLoop {
public:
    // The link outlives the pump.
    explicit Pump(ViewLink& link) : link_(link) {}

    // Delivers events until `done`, or until the view is lost and no other took
    // its place; starts a view when there is none at the beginning. Raises when
    // none can be had.
    void Run(const std::function<bool()>& done) override;
    // The same for a program's whole life: goes on without a view as long as any
    // other descriptor is watched.
    void RunUntil(const std::function<bool()>& done);

    // Calls `onReady` when poll(2) reports any of `events`, or an error, for the
    // descriptor; at most one per descriptor. The callback may do anything, and
    // the descriptor stays open until Unwatch.
    void Watch(int descriptor, short events, std::function<void()> onReady);
    void Unwatch(int descriptor) { watched_.erase(descriptor); }

private:
    struct Watched {
        short events;
        std::function<void()> onReady;
    };

    void Turn();

    ViewLink& link_;
    std::map<int, Watched> watched_;
    bool isWatchedsTurn_ = false;
};

}  // namespace korvane::view_link
