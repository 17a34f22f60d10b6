#include "bindings/calc/host_version.h"

#include <gtest/gtest.h>

namespace korvane::calc {
namespace {

TEST(HostVersion, IsTheOfficesOwn) {
    EXPECT_EQ(HostVersion(u"7.4"), u"7.4");
    EXPECT_EQ(HostVersion(u"7.6.4.1"), u"7.6.4.1");
}

TEST(HostVersion, IsNeverThatOfAHostWithARibbon) {
    EXPECT_EQ(HostVersion(u"24.2"), u"0.24.2");
    EXPECT_EQ(HostVersion(u"10.1"), u"0.10.1");
}

}  // namespace
}  // namespace korvane::calc
