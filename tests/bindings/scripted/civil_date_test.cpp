#include "bindings/scripted/civil_date.h"

#include <gtest/gtest.h>

#include "platform/clock.h"

namespace korvane::scripted {
namespace {

TEST(CivilDate, IsTheOtherWayRoundOfTheSerialDay) {
    // Every day from 1600 to 2400, and thereby each kind of leap year.
    const auto first = static_cast<std::int64_t>(platform::DateSerial({1600, 1, 1}));
    const auto last = static_cast<std::int64_t>(platform::DateSerial({2400, 12, 31}));
    for (std::int64_t day = first; day <= last; ++day) {
        const CivilDate date = CivilDateOf(day);
        const platform::LocalTime time{static_cast<int>(date.year), static_cast<int>(date.month),
                                       static_cast<int>(date.day)};
        ASSERT_EQ(platform::DateSerial(time), static_cast<double>(day));
    }
}

TEST(CivilDate, KnowsTheCalendar) {
    struct Case {
        std::int64_t day;
        std::int64_t year;
        unsigned month;
        unsigned dayOfMonth;
    };
    for (const Case& c : {Case{0, 1899, 12, 30}, Case{25569, 1970, 1, 1}, Case{36585, 2000, 2, 29},
                          Case{36586, 2000, 3, 1}, Case{-693960, -1, 12, 31}}) {
        const CivilDate date = CivilDateOf(c.day);
        EXPECT_EQ(date.year, c.year) << c.day;
        EXPECT_EQ(date.month, c.month) << c.day;
        EXPECT_EQ(date.day, c.dayOfMonth) << c.day;
    }
}

}  // namespace
}  // namespace korvane::scripted
