#include "bindings/view_link/linked_screen.h"

#include <algorithm>
#include <cmath>

namespace korvane::view_link {
namespace {

using platform::PixelRect;

PixelRect RectOf(const platform::MonitorPlace& place) {
    return {place.left, place.top, place.right, place.bottom};
}

// How many pixels two rectangles share.
double Shared(const PixelRect& a, const PixelRect& b) {
    const double width = static_cast<double>(std::min(a.right, b.right)) - std::max(a.left, b.left);
    const double height =
        static_cast<double>(std::min(a.bottom, b.bottom)) - std::max(a.top, b.top);
    return std::max(width, 0.0) * std::max(height, 0.0);
}

std::int32_t Pixels(double twips, double twipsPerPixel) {
    return static_cast<std::int32_t>(std::lround(twips / twipsPerPixel));
}

}  // namespace

PixelRect LinkedScreen::Primary() const {
    const auto& monitors = link_.metrics().monitors;
    return monitors.empty() ? PixelRect{0, 0, 1920, 1080} : RectOf(monitors.front().bounds);
}

double LinkedScreen::Width() {
    const PixelRect primary = Primary();
    return (primary.right - primary.left) * TwipsPerPixelX();
}

double LinkedScreen::Height() {
    const PixelRect primary = Primary();
    return (primary.bottom - primary.top) * TwipsPerPixelY();
}

std::optional<PixelRect> LinkedScreen::WindowRect(std::int64_t handle) {
    const platform::Form* form = link_.windows() ? link_.windows()->FindForm(handle) : nullptr;
    if (!form) return windowRect ? windowRect(handle) : std::nullopt;
    const platform::Place& place = form->GetPlace();
    const double x = TwipsPerPixelX();
    const double y = TwipsPerPixelY();
    return PixelRect{Pixels(place.left, x), Pixels(place.top, y),
                     Pixels(double{place.left} + place.width, x),
                     Pixels(double{place.top} + place.height, y)};
}

std::optional<platform::Monitor> LinkedScreen::MonitorOf(const PixelRect& rect) {
    const auto& monitors = link_.metrics().monitors;
    const auto most =
        std::max_element(monitors.begin(), monitors.end(), [&rect](const auto& a, const auto& b) {
            return Shared(RectOf(a.bounds), rect) < Shared(RectOf(b.bounds), rect);
        });
    if (most == monitors.end()) return std::nullopt;
    return platform::Monitor{RectOf(most->bounds), RectOf(most->work)};
}

std::int64_t LinkedScreen::FindWindow(const std::u16string& title) {
    const std::int64_t hosts = findWindow ? findWindow(title) : 0;
    if (hosts != 0 || !link_.windows()) return hosts;
    for (const auto& [id, form] : link_.windows()->forms()) {
        if (form->IsShown() && form->Caption() == title) return form->Handle();
    }
    return 0;
}

}  // namespace korvane::view_link
