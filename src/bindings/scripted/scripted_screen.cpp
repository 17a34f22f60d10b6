#include "bindings/scripted/scripted_screen.h"

#include <algorithm>

#include "base/error.h"

namespace korvane::scripted {
namespace {

using platform::PixelRect;

// The pixels that two rectangles share.
std::int64_t Overlap(const PixelRect& a, const PixelRect& b) {
    const std::int64_t width = std::int64_t{std::min(a.right, b.right)} - std::max(a.left, b.left);
    const std::int64_t height = std::int64_t{std::min(a.bottom, b.bottom)} - std::max(a.top, b.top);
    return width > 0 && height > 0 ? width * height : 0;
}

}  // namespace

double ScriptedScreen::TwipsPerPixelX() {
    accesses_->Enter("Screen.TwipsPerPixelX");
    return twipsPerPixelX;
}

double ScriptedScreen::TwipsPerPixelY() {
    accesses_->Enter("Screen.TwipsPerPixelY");
    return twipsPerPixelY;
}

const PixelRect& ScriptedScreen::Primary() const {
    if (monitors.empty()) throw Error(kErrorApplication, u"There is no monitor");
    return monitors.front().bounds;
}

double ScriptedScreen::Width() {
    accesses_->Enter("Screen.Width");
    return (Primary().right - Primary().left) * twipsPerPixelX;
}

double ScriptedScreen::Height() {
    accesses_->Enter("Screen.Height");
    return (Primary().bottom - Primary().top) * twipsPerPixelY;
}

std::optional<PixelRect> ScriptedScreen::WindowRect(std::int64_t handle) {
    accesses_->Enter("Screen.WindowRect");
    const auto found = windows.find(handle);
    if (found == windows.end()) return std::nullopt;
    return found->second.rect;
}

std::optional<platform::Monitor> ScriptedScreen::MonitorOf(const PixelRect& rect) {
    accesses_->Enter("Screen.MonitorOf");
    if (!monitorsKnown || monitors.empty()) return std::nullopt;
    return *std::max_element(monitors.begin(), monitors.end(), [&](const auto& a, const auto& b) {
        return Overlap(a.bounds, rect) < Overlap(b.bounds, rect);
    });
}

std::int64_t ScriptedScreen::FindWindow(const std::u16string& title) {
    accesses_->Enter("Screen.FindWindow", title);
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [&](const auto& one) { return one.second.title == title; });
    return found == windows.end() ? 0 : found->first;
}

platform::Colour ScriptedScreen::WindowBackground() {
    accesses_->Enter("Screen.WindowBackground");
    return windowBackground;
}

}  // namespace korvane::scripted
