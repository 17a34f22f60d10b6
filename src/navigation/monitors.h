// Where a dialog stands, relative to the monitor that it stands on.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/screen.h"
#include "platform/window/form.h"

namespace korvane::MMonitors {

constexpr std::int32_t Max(std::int32_t a, std::int32_t b) { return a > b ? a : b; }
constexpr std::int32_t Min(std::int32_t a, std::int32_t b) { return a < b ? a : b; }

// Whole twips; top and left count from the monitor's top-left corner.
struct Bounds {
    std::int32_t top = 0;
    std::int32_t left = 0;
    std::int32_t height = 0;
    std::int32_t width = 0;
    friend bool operator==(const Bounds&, const Bounds&) = default;
};

// "top;left;height;width". Raises kErrorTypeMismatch for a text that does not
// begin with four numbers, kErrorOverflow for numbers beyond 32 bits.
Bounds ParseBounds(std::u16string_view text);

// The dialog's bounds as such a text. A monitor that is not known counts as one
// at the desktop's corner. Raises what the screen raises.
std::u16string BoundsText(platform::Screen& screen, const platform::Form& dialog);

// Moves the dialog to the bounds on the monitor of the host's window
// `hwndHost`, within the monitor's work area; one that is larger keeps its
// top-left corner inside. A size that no window has counts as no bounds. Raises
// what the screen raises.
void ApplyBounds(platform::Screen& screen, std::int64_t hwndHost, platform::Form& dialog,
                 const Bounds& bounds);

}  // namespace korvane::MMonitors
