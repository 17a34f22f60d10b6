#include "navigation/monitors.h"

#include <array>
#include <cmath>
#include <optional>

#include "base/number.h"

namespace korvane::MMonitors {
namespace {

using platform::Monitor;
using platform::PixelRect;
using platform::Place;
using platform::Screen;

std::int32_t Pixels(double twips, double twipsPerPixel) {
    return RoundToWhole(twips / twipsPerPixel);
}

PixelRect WindowRect(Screen& screen, const Place& place) {
    const double perX = screen.TwipsPerPixelX();
    const double perY = screen.TwipsPerPixelY();
    return {Pixels(place.left, perX), Pixels(place.top, perY),
            Pixels(double{place.left} + place.width, perX),
            Pixels(double{place.top} + place.height, perY)};
}

std::optional<Monitor> MonitorOfWindow(Screen& screen, std::int64_t handle) {
    const auto rect = screen.WindowRect(handle);
    // A host without a window stands nowhere: the empty rectangle falls back to
    // the primary monitor.
    return screen.MonitorOf(rect.value_or(PixelRect{}));
}

}  // namespace

Bounds ParseBounds(std::u16string_view text) {
    std::array<std::int32_t, 4> numbers{};
    for (std::int32_t& number : numbers) {
        const auto end = std::min(text.find(u';'), text.size());
        number = TextToWhole(text.substr(0, end));  // a missing part is no number
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

std::u16string BoundsText(Screen& screen, const platform::Form& dialog) {
    std::int32_t top = RoundToWhole(dialog.Top());
    std::int32_t left = RoundToWhole(dialog.Left());
    if (const auto monitor = screen.MonitorOf(WindowRect(screen, dialog.GetPlace()))) {
        top = RoundToWhole(top - monitor->bounds.top * screen.TwipsPerPixelY());
        left = RoundToWhole(left - monitor->bounds.left * screen.TwipsPerPixelX());
    }
    return NumberText(top) + u";" + NumberText(left) + u";" + NumberText(dialog.Height()) + u";" +
           NumberText(dialog.Width());
}

void ApplyBounds(Screen& screen, std::int64_t hwndHost, platform::Form& dialog,
                 const Bounds& bounds) {
    double top = bounds.top;
    double left = bounds.left;
    const double height = bounds.height;
    const double width = bounds.width;
    constexpr double kLargest = 1'000'000;  // twips; no window was ever so large
    if (!(height > 0 && height < kLargest && width > 0 && width < kLargest)) return;
    if (const auto monitor = MonitorOfWindow(screen, hwndHost)) {
        const double perX = screen.TwipsPerPixelX();
        const double perY = screen.TwipsPerPixelY();
        const PixelRect& work = monitor->work;
        top += monitor->bounds.top * perY;
        left += monitor->bounds.left * perX;
        top = std::max(work.top * perY, std::min(work.bottom * perY - height, top));
        left = std::max(work.left * perX, std::min(work.right * perX - width, left));
    } else {
        top = std::max(0.0, std::min(screen.Height() - height, top));
        // At the left edge or beyond it: without any knowledge of monitors a
        // dialog must not open to the right of what can be seen.
        left = std::min(0.0, std::min(screen.Width() - width, left));
    }
    const auto whole = [](double twips) { return static_cast<float>(RoundToWhole(twips)); };
    dialog.Move({whole(left), whole(top), whole(width), whole(height)});
}

}  // namespace korvane::MMonitors
