#include "bindings/qt/units.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace korvane::qt {
namespace {

// Far more than any desktop: numbers beyond are a peer's nonsense, and Qt's own
// arithmetic must not overflow on them.
constexpr double kFarthest = 1'000'000;

int Rounded(double pixels) {
    return static_cast<int>(std::lround(std::clamp(pixels, -kFarthest, kFarthest)));
}

// What the designed layouts leave for a character of average width and for a
// line.
constexpr double kDesignedWidth = 90;
constexpr double kDesignedHeight = 195;

// No design shrinks below its pixels, and none grows beyond use.
double Bounded(double twips) { return std::clamp(twips, 3.0, 15.0); }

}  // namespace

int Units::PixelsX(double twips) const { return Rounded(twips / twipsX); }
int Units::PixelsY(double twips) const { return Rounded(twips / twipsY); }

QRect Units::Pixels(const platform::Place& place) const {
    const int left = PixelsX(place.left);
    const int top = PixelsY(place.top);
    const int right = PixelsX(double{place.left} + double{place.width});
    const int bottom = PixelsY(double{place.top} + double{place.height});
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

Units UnitsOf(const QFont& font) {
    const QFontMetricsF metrics(font);
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const double width = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
    const double height = metrics.height();
    if (width <= 0 || height <= 0) return {};
    return {Bounded(kDesignedWidth / width), Bounded(kDesignedHeight / height)};
}

}  // namespace korvane::qt
