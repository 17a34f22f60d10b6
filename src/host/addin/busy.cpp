#include "host/addin/busy.h"

#include <exception>
#include <utility>

#include "base/attempt.h"
#include "host/addin/shared_state.h"
#include "host/constants.h"

namespace korvane {

void BeginBusy(SharedState& state) {
    state.application->SetCursor(host::xlDefault);
    state.application->SetEnableEvents(false);
    state.hostEventsOn = false;
}

void EndBusy(SharedState& state) {
    if (!state.application) return;  // shut down meanwhile
    std::exception_ptr first;
    const auto attempt = [&first](auto step) {
        try {
            step();
        } catch (const Error&) {
            if (!first) first = std::current_exception();
        }
    };
    host::Application& application = *state.application;
    attempt([&] { application.SetStatusBar(Value(false)); });
    attempt([&] { application.SetEnableEvents(true); });
    attempt([&] { application.SetCursor(host::xlDefault); });
    state.hostEventsOn = true;
    if (first) std::rethrow_exception(first);
}

BusyScope::BusyScope(SharedState& state) : state_(state) {
    try {
        BeginBusy(state_);
    } catch (...) {
        Succeeds([this] { EndBusy(state_); });
        throw;
    }
}

BusyScope::~BusyScope() {
    if (busy_) Succeeds([this] { EndBusy(state_); });
}

void BusyScope::End() {
    busy_ = false;
    EndBusy(state_);
}

}  // namespace korvane
