// The brackets of the procedures where a user's action enters the system.
#pragma once

#include <utility>

#include "base/attempt.h"  // Guarded, for the procedures below them
#include "host/addin/error_handler.h"
#include "host/addin/error_numbers.h"

namespace korvane {

// Runs the body of an entry point: a member that the host or a window calls. A
// failure is reported under the procedure's name, which logs it, shows it and
// ends its chain; nothing leaves. Returns whether the body ended without one.
template <class Body>
bool AtEntryPoint(MErrorHandler& handler, const char16_t* module, const char16_t* procedure,
                  Body&& body) noexcept {
    const MErrorHandler::EntryPoint entryPoint(handler);
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        ReportCurrent(handler, module, procedure, true);
        return false;
    }
}

// Raises kStepFailed: a step reported failure, and what went wrong is pending
// already.
[[noreturn]] inline void RaiseStepFailed() { throw Error(kStepFailed, kGeneralFailure); }

}  // namespace korvane
