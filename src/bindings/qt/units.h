// From the twips of the windows' design to the desktop's pixels and back. Pixels
// are Qt's: independent of the screen's scale factor.
#pragma once

#include <QFont>
#include <QRect>

#include "platform/window/types.h"

namespace korvane::qt {

struct Units {
    double twipsX = 15;  // per pixel
    double twipsY = 15;

    int PixelsX(double twips) const;
    int PixelsY(double twips) const;
    // Each edge is rounded for itself: neighbours that touch still do.
    QRect Pixels(const platform::Place& place) const;
    float TwipsX(double pixels) const { return static_cast<float>(pixels * twipsX); }
    float TwipsY(double pixels) const { return static_cast<float>(pixels * twipsY); }
    friend bool operator==(const Units&, const Units&) = default;
};

// The scale at which texts in this font take the room that the windows' designed
// layouts leave for them.
Units UnitsOf(const QFont& font);

}  // namespace korvane::qt
