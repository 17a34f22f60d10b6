#include "platform/clock.h"

#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

TEST(DateSerial, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(DateSerial({1899, 12, 30, 0, 0, 0}), 0);
    EXPECT_EQ(DateSerial({1900, 1, 1, 0, 0, 0}), 2);
    EXPECT_EQ(DateSerial({1970, 1, 1, 0, 0, 0}), 25569);
    EXPECT_EQ(DateSerial({2000, 2, 29, 0, 0, 0}), 36585);
    EXPECT_EQ(DateSerial({2000, 3, 1, 0, 0, 0}), 36586);
    EXPECT_EQ(DateSerial({2026, 11, 21, 0, 0, 0}), 46347);
    EXPECT_EQ(DateSerial({1899, 12, 29, 0, 0, 0}), -1);
}

TEST(DateSerial, TheTimeOfDayIsTheFraction) {
    EXPECT_EQ(DateSerial({2026, 11, 21, 12, 0, 0}), 46347.5);
    EXPECT_DOUBLE_EQ(DateSerial({2026, 11, 21, 23, 59, 59}), 46347 + 86399 / 86400.0);
}

}  // namespace
}  // namespace korvane::platform
