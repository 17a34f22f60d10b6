#include "platform/clock.h"

namespace korvane::platform {

double DateSerial(const LocalTime& time) {
    // Howard Hinnant's civil-to-days, counted from 1 March of year 0 so that the
    // leap day is a year's last.
    const std::int64_t year = time.month <= 2 ? time.year - 1 : time.year;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t shifted = time.month > 2 ? time.month - 3 : time.month + 9;
    const std::int64_t dayOfYear = (153 * shifted + 2) / 5 + time.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    constexpr std::int64_t kEpoch = 693899;  // 30 December 1899, counted the same way
    const std::int64_t days = era * 146097 + dayOfEra - kEpoch;
    const int seconds = (time.hour * 60 + time.minute) * 60 + time.second;
    return static_cast<double>(days) + seconds / 86400.0;
}

}  // namespace korvane::platform
