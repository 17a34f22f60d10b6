#include "bindings/posix/posix_clock.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "bindings/posix/child.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

std::string Show(const platform::LocalTime& time) {
    std::string text;
    for (const int part : {time.year, time.month, time.day, time.hour, time.minute, time.second}) {
        text += (text.empty() ? "" : " ") + std::to_string(part);
    }
    return text;
}

TEST(LocalTimeOf, IsInTheZoneThatIsSetNow) {
    {
        const Variable zone("TZ", "UTC0");
        EXPECT_EQ(Show(LocalTimeOf(0)), "1970 1 1 0 0 0");
        EXPECT_EQ(Show(LocalTimeOf(951'782'399)), "2000 2 28 23 59 59");
        EXPECT_EQ(Show(LocalTimeOf(951'782'400)), "2000 2 29 0 0 0");
    }
    const Variable zone("TZ", "ABC-5:30");
    EXPECT_EQ(Show(LocalTimeOf(0)), "1970 1 1 5 30 0");
}

TEST(LocalTimeOf, TakesAnyMoment) {
    EXPECT_EQ(Show(LocalTimeOf(std::numeric_limits<std::time_t>::max())), "1970 1 1 0 0 0");
}

TEST(PosixClock, IsTheSystemsClock) {
    const Variable zone("TZ", "UTC0");
    const std::time_t before = std::time(nullptr);
    const auto now = PosixClock().Now();
    const std::time_t after = std::time(nullptr);
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    const std::time_t moment = ::timegm(&parts);
    EXPECT_GE(moment, before);
    EXPECT_LE(moment, after);
}

TEST(PosixClock, NeverTicksTheSame) {
    std::set<std::uint64_t> seen;
    for (int k = 0; k < 50; ++k) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        ASSERT_EQ(InChild([&] {
                      const auto ticks = PosixClock().Ticks();
                      EXPECT_EQ(::write(ends[1], &ticks, sizeof ticks), 8);
                  }),
                  0);
        std::uint64_t ticks = 0;
        ASSERT_EQ(::read(ends[0], &ticks, sizeof ticks), 8);
        ::close(ends[0]);
        ::close(ends[1]);
        EXPECT_TRUE(seen.insert(ticks).second);
    }
}

}  // namespace
}  // namespace korvane::posix
