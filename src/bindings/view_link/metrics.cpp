#include "bindings/view_link/metrics.h"

#include <algorithm>
#include <cstdlib>

namespace korvane::view_link {
namespace {

using platform::MonitorPlace;

bool IsScale(float twipsPerPixel) { return twipsPerPixel >= 0.5F && twipsPerPixel <= 150; }

bool IsBorder(float twips) { return twips >= 0 && twips <= 10'000; }

bool IsPlace(const MonitorPlace& place) {
    constexpr int kFar = 1'000'000;
    const auto isNear = [](int pixels) { return pixels > -kFar && pixels < kFar; };
    return isNear(place.left) && isNear(place.top) && isNear(place.right) && isNear(place.bottom) &&
           place.left < place.right && place.top < place.bottom;
}

}  // namespace

bool IsSensible(const platform::ViewMetrics& metrics) {
    constexpr std::size_t kMostMonitors = 64;
    const platform::FrameSize& frame = metrics.frame;
    return IsScale(metrics.twipsPerPixelX) && IsScale(metrics.twipsPerPixelY) &&
           IsBorder(frame.left) && IsBorder(frame.top) && IsBorder(frame.right) &&
           IsBorder(frame.bottom) && metrics.monitors.size() <= kMostMonitors &&
           std::all_of(metrics.monitors.begin(), metrics.monitors.end(),
                       [](const auto& one) { return IsPlace(one.bounds) && IsPlace(one.work); }) &&
           metrics.windowBackground >= 0 &&
           metrics.windowBackground <= platform::Rgb(255, 255, 255);
}

platform::ViewMetrics AssumedMetrics() {
    platform::ViewMetrics metrics;
    metrics.protocol = platform::kLinkProtocol;
    metrics.twipsPerPixelX = 15;  // 96 pixels to the inch
    metrics.twipsPerPixelY = 15;
    metrics.windowBackground = platform::Rgb(255, 255, 255);
    return metrics;
}

}  // namespace korvane::view_link
