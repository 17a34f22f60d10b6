#include "bindings/view_link/pump.h"

#include <poll.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/error.h"
#include "bindings/view_link/waiting.h"

namespace korvane::view_link {

void Pump::Run(const std::function<bool()>& done) {
    if (done()) return;
    if (!link_.EnsureView()) throw Error(kErrorApplication, u"The window cannot be shown");
    while (!done() && link_.HasView()) Turn();
}

void Pump::RunUntil(const std::function<bool()>& done) {
    while (!done() && (link_.HasView() || !watched_.empty())) Turn();
}

void Pump::Watch(int descriptor, short events, std::function<void()> onReady) {
    watched_[descriptor] = {events, std::move(onReady)};
}

// Waits, and does one thing: whoever waits looks at its own state after each,
// and what was ready may not be so any more after a callback that waited itself.
// The view and the others take turns, so that no flood of either keeps the other
// from being heard.
void Pump::Turn() {
    link_.Flush();
    std::vector<pollfd> all{{link_.fd(), link_.events(), 0}};
    for (const auto& [descriptor, watched] : watched_) {
        all.push_back({descriptor, watched.events, 0});
    }
    const int count = ::poll(all.data(), all.size(), PollTimeout(link_.NextTimeout()));
    const auto ready = std::find_if(all.begin() + 1, all.end(), [count](const pollfd& one) {
        return count > 0 && one.revents;
    });
    isWatchedsTurn_ = !isWatchedsTurn_ && ready != all.end();
    if (!isWatchedsTurn_) return link_.OnReady();
    // A copy: the callback may end its own watch.
    const auto onReady = watched_.at(ready->fd).onReady;
    onReady();
}

}  // namespace korvane::view_link
