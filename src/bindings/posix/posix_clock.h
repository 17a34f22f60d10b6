// The system's clock.
#pragma once

#include <cstdint>
#include <ctime>

#include "platform/clock.h"

namespace korvane::posix {

// The moment in the time zone that the user has set now. 1 January 1970 when
// the year is beyond what the system can name.
platform::LocalTime LocalTimeOf(std::time_t moment);

class PosixClock : public platform::Clock {
public:
    platform::LocalTime Now() override;
    // Also differs between processes that start within one tick.
    std::uint64_t Ticks() override;
};

}  // namespace korvane::posix
