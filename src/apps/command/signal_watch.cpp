#include "apps/command/signal_watch.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <initializer_list>

namespace korvane::command {

SignalWatch::SignalWatch() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        // One that the caller's caller has set to be ignored (nohup) stays so.
        struct sigaction action;
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            sigaddset(&ending, number);
        }
    }
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
    descriptor_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
}

SignalWatch::~SignalWatch() {
    if (descriptor_ >= 0) close(descriptor_);
    // Pending again, then let through together with any other.
    if (taken_ != 0) raise(taken_);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool SignalWatch::Take() {
    signalfd_siginfo info;
    if (read(descriptor_, &info, sizeof info) != static_cast<ssize_t>(sizeof info)) return false;
    taken_ = static_cast<int>(info.ssi_signo);
    return true;
}

}  // namespace korvane::command
