// Monitors, colours, and windows that are not the system's own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace korvane::platform {

// Pixels on the desktop that all monitors share; right and bottom lie outside.
struct PixelRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

struct Monitor {
    PixelRect bounds;
    PixelRect work;  // without task bars and panels
};

// Red + 256 * green + 65536 * blue, each 0–255.
using Colour = std::int32_t;
constexpr Colour Rgb(int red, int green, int blue) { return red | green << 8 | blue << 16; }

// Every member may raise; none changes anything.
class Screen {
public:
    virtual ~Screen() = default;
    // Twips (1/1440 of an inch as the windows' design counts it) per pixel.
    // Greater than 0. The view derives it from its font, so that a caption that
    // fits by design fits on the screen.
    virtual double TwipsPerPixelX() = 0;
    virtual double TwipsPerPixelY() = 0;
    // The primary monitor's size in twips, by TwipsPerPixelX and Y.
    virtual double Width() = 0;
    virtual double Height() = 0;
    // Where a window stands, its frame included; nothing when there is no such
    // window.
    virtual std::optional<PixelRect> WindowRect(std::int64_t handle) = 0;
    // The monitor that holds most of `rect` (the first of equals); the primary
    // one when none does.
    // Nothing when the monitors are not known.
    virtual std::optional<Monitor> MonitorOf(const PixelRect& rect) = 0;
    // The top-level window with exactly this title; 0 when there is none, the
    // first that the window system names when there are several.
    virtual std::int64_t FindWindow(const std::u16string& title) = 0;
    // The background of the desktop's text boxes.
    virtual Colour WindowBackground() = 0;
};

}  // namespace korvane::platform
