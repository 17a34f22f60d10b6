// Times as poll(2) counts them.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>

#include "bindings/view_link/limits.h"

namespace korvane::view_link {

// Rounded up: a loop that wakes too early turns for nothing. -1 for no end.
inline int PollTimeout(const std::optional<Clock::duration>& time) {
    if (!time) return -1;
    const auto whole = std::chrono::ceil<std::chrono::milliseconds>(*time).count();
    return static_cast<int>(std::clamp<std::int64_t>(whole, 0, std::numeric_limits<int>::max()));
}

}  // namespace korvane::view_link
