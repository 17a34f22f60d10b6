#include "bindings/scripted/civil_date.h"

namespace korvane::scripted {

// Howard Hinnant's days-to-civil, counted from 1 March of year 0 so that the
// leap day is a year's last.
CivilDate CivilDateOf(std::int64_t serialDay) {
    constexpr std::int64_t kEpoch = 693899;  // 30 December 1899, counted that way
    const std::int64_t days = serialDay + kEpoch;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const auto dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shifted = (5 * dayOfYear + 2) / 153;
    const unsigned month = shifted < 10 ? shifted + 3 : shifted - 9;
    return {static_cast<std::int64_t>(yearOfEra) + era * 400 + (month <= 2 ? 1 : 0), month,
            dayOfYear - (153 * shifted + 2) / 5 + 1};
}

}  // namespace korvane::scripted
