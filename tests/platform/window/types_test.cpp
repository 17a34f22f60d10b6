#include "platform/window/types.h"

#include <gtest/gtest.h>

namespace korvane::platform {
namespace {

TEST(Types, EveryPropertyHasAType) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(Property::kCount_); ++k) {
        EXPECT_LT(TypeOf(static_cast<Property>(k)), std::variant_size_v<PropertyValue>) << k;
    }
    EXPECT_EQ(TypeOf(Property::kCount_), std::variant_npos);
    EXPECT_EQ(TypeOf(Property::kOwner), PropertyValue(std::int64_t{}).index());
}

}  // namespace
}  // namespace korvane::platform
