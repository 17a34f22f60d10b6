// The user's clock and calendar.
#pragma once

#include <cstdint>

namespace korvane::platform {

// A moment in the user's own time zone.
struct LocalTime {
    int year = 1970;
    int month = 1;  // 1–12
    int day = 1;    // 1–31
    int hour = 0;   // 0–23
    int minute = 0;
    int second = 0;  // 0–60
};

// Days since 30 December 1899, the time of day as the fraction: how the hosts
// and the settings count days. Any date of the Gregorian calendar.
double DateSerial(const LocalTime& time);

// None of the members fails.
class Clock {
public:
    virtual ~Clock() = default;
    virtual LocalTime Now() = 0;
    // A number that differs from start to start, to seed random numbers with.
    virtual std::uint64_t Ticks() = 0;
};

}  // namespace korvane::platform
