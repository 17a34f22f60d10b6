// Signals that ask the program to end, turned into something to wait for.
#pragma once

#include <csignal>

namespace korvane::command {

// While it lives, SIGINT, SIGTERM and SIGHUP do not end the process; whoever
// waits for the office watches descriptor() too and then ends in the ordinary
// way, cleaning up. When the watch goes, a signal that came in the meantime does
// what it would have done: so declare the watch before what must be cleaned up.
class SignalWatch {
public:
    SignalWatch();
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    // Readable as soon as one of the signals has come; -1 when the system has no
    // such descriptor left.
    int descriptor() const { return descriptor_; }
    // Takes note of the signal that made the descriptor readable. False when
    // there is none after all.
    bool Take();

private:
    sigset_t before_;
    int descriptor_;
    int taken_ = 0;
};

}  // namespace korvane::command
