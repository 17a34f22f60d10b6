#include "bindings/view_link/metrics.h"

#include <gtest/gtest.h>

#include <functional>

#include "bindings/view_link/near_view.h"

namespace korvane::view_link {
namespace {

using platform::ViewMetrics;

TEST(Metrics, WhatIsAssumedAndWhatViewsTellIsSensible) {
    EXPECT_TRUE(IsSensible(AssumedMetrics()));
    EXPECT_TRUE(IsSensible(test::SomeMetrics()));
}

TEST(Metrics, NoDesktopIsLikeThis) {
    const std::function<void(ViewMetrics&)> damages[] = {
        [](ViewMetrics& it) { it.twipsPerPixelX = 0; },
        [](ViewMetrics& it) { it.twipsPerPixelY = -1; },
        [](ViewMetrics& it) { it.twipsPerPixelY = 1e30F; },
        [](ViewMetrics& it) { it.frame.left = -1; },
        [](ViewMetrics& it) { it.frame.bottom = 1e9F; },
        [](ViewMetrics& it) { it.monitors[0].bounds.right = 0; },
        [](ViewMetrics& it) { it.monitors[1].work.bottom = 2'000'000'000; },
        [](ViewMetrics& it) { it.monitors.resize(65, it.monitors[0]); },
        [](ViewMetrics& it) { it.windowBackground = -1; },
        [](ViewMetrics& it) { it.windowBackground = 0x1000000; },
    };
    for (const auto& damage : damages) {
        ViewMetrics metrics = test::SomeMetrics();
        damage(metrics);
        EXPECT_FALSE(IsSensible(metrics)) << &damage - damages;
    }
}

}  // namespace
}  // namespace korvane::view_link
