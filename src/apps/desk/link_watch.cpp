#include "apps/desk/link_watch.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "bindings/view_link/waiting.h"

namespace korvane::desk {

// What the two threads share.
struct LinkWatch::Shared {
    Shared() {
        if (::pipe2(wake, O_CLOEXEC | O_NONBLOCK) != 0)
            throw std::system_error(errno, std::generic_category(), "no pipe");
    }
    ~Shared() {
        ::close(wake[0]);
        ::close(wake[1]);
    }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    void Wake() const {
        const char byte = 0;
        // A full pipe wakes as well.
        [[maybe_unused]] const auto written = ::write(wake[1], &byte, 1);
    }

    int wake[2] = {-1, -1};
    std::function<void()> turn;  // to be posted
    calc::MainThread* thread = nullptr;

    std::mutex mutex;
    // The link as the main thread left it. The descriptor may be closed, and be
    // another's, while it is waited for: then there is a turn too many.
    int descriptor = -1;
    short events = 0;
    std::optional<view_link::Clock::time_point> deadline;
    bool isWatching = false;
    bool isComing = false;  // a turn is on its way
    bool ends = false;
};

LinkWatch::LinkWatch(calc::MainThread thread, view_link::ViewLink& link)
    : thread_(std::move(thread)), link_(link), shared_(std::make_shared<Shared>()) {
    shared_->thread = &thread_;
    // A turn that was posted before the end and comes behind it finds nothing.
    shared_->turn = [this, weak = std::weak_ptr<Shared>(shared_)] {
        const auto shared = weak.lock();
        if (!shared) return;
        {
            const std::lock_guard lock(shared->mutex);
            if (shared->ends) return;
        }
        Turn();
    };
    // The link may be another than the one that is waited for: a view that was only
    // just started.
    link_.onQueued = [this] { TurnSoon(); };
    waiter_ = std::thread(Watch, shared_);
}

LinkWatch::~LinkWatch() {
    link_.onQueued = nullptr;
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->ends = true;
    }
    shared_->Wake();
    waiter_.join();
}

void LinkWatch::Update() {
    link_.Flush();
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->descriptor = link_.fd();
        shared_->events = link_.events();
        const auto timeout = link_.NextTimeout();
        shared_->deadline.reset();
        if (timeout) shared_->deadline = view_link::Clock::now() + *timeout;
        shared_->isWatching = true;
        shared_->isComing = false;
    }
    shared_->Wake();
}

void LinkWatch::TurnSoon() {
    {
        const std::lock_guard lock(shared_->mutex);
        if (std::exchange(shared_->isComing, true)) return;
        shared_->isWatching = false;
    }
    thread_.Post(shared_->turn);
}

void LinkWatch::Turn() {
    link_.OnReady();
    if (onTurn) onTurn();
    Update();
}

void LinkWatch::Watch(const std::shared_ptr<Shared>& shared) {
    for (;;) {
        pollfd waits[2] = {{shared->wake[0], POLLIN, 0}, {-1, 0, 0}};
        std::optional<view_link::Clock::duration> left;
        {
            const std::lock_guard lock(shared->mutex);
            if (shared->ends) return;
            if (shared->isWatching) {
                waits[1].fd = shared->descriptor;
                waits[1].events = shared->events;
                if (shared->deadline) left = *shared->deadline - view_link::Clock::now();
            }
        }
        const int count = ::poll(waits, 2, view_link::PollTimeout(left));
        if (count < 0 && errno != EINTR) return;
        const bool woken = count > 0 && waits[0].revents != 0;
        if (woken) {
            char bytes[64];
            while (::read(shared->wake[0], bytes, sizeof bytes) > 0) {
            }
        }
        const bool isReady = count > 0 && waits[1].revents != 0;
        const std::lock_guard lock(shared->mutex);
        if (shared->ends) return;
        const bool isDue = shared->deadline && view_link::Clock::now() >= *shared->deadline;
        if (!shared->isWatching || (!isReady && !isDue)) continue;
        shared->isWatching = false;
        shared->isComing = true;
        shared->thread->Post(shared->turn);
    }
}

}  // namespace korvane::desk
