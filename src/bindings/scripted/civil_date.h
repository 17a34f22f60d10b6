// Dates of the calendar from the days that hosts count.
#pragma once

#include <cstdint>

namespace korvane::scripted {

struct CivilDate {
    std::int64_t year;
    unsigned month;  // 1–12
    unsigned day;    // 1–31
};

// The date of a serial day, counted from 30 December 1899.
CivilDate CivilDateOf(std::int64_t serialDay);

}  // namespace korvane::scripted
