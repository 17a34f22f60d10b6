// The office's failures and error values as this system knows them.
#pragma once

#include <optional>
#include <utility>

#include "base/error.h"
#include "base/value.h"

namespace korvane::calc {

// The host's error for a cell's error number; nothing for 0, no error.
std::optional<ErrorCode> HostError(int calcError);

// Whether a cell's error number says that its formula could not be read at all.
bool IsMalformed(int calcError);

// Throws the exception that is being handled, as korvane::Error.
[[noreturn]] void ThrowTranslated();

// Runs a call into the office. This is the one place where its exceptions
// become korvane::Error: every member of the boundary goes through here.
template <class Call>
decltype(auto) Translated(Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (...) {
        ThrowTranslated();
    }
}

// Throws the host's general failure.
[[noreturn]] void Fail(const char16_t* description);
// What a member answers that needs Calc's window, when there is none.
[[noreturn]] void FailWithoutWindow(const char16_t* member);

}  // namespace korvane::calc
