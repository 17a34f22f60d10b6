// Running a step that may fail.
#pragma once

#include <type_traits>
#include <utility>

#include "base/error.h"

namespace korvane {

// Runs a step whose failure is to be expected, such as a call to the host, and
// says whether it ended without one. What is no Error passes on.
template <class Step>
bool Succeeds(Step&& step) {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (const Error&) {
        return false;
    }
}

// The same where nothing at all may pass on.
template <class Step>
bool Suppressed(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        return false;
    }
}

// The body of a procedure below the entry points that returns whether it
// succeeded. `body` returns that, or nothing for "always"; what it throws is
// reported under the procedure's name and gives false.
template <class Body>
bool Guarded(ErrorReporter& reporter, const char16_t* module, const char16_t* procedure,
             Body&& body) noexcept {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            std::forward<Body>(body)();
            return true;
        } else {
            return std::forward<Body>(body)();
        }
    } catch (...) {
        ReportCurrent(reporter, module, procedure, false);
        return false;
    }
}

}  // namespace korvane
