#include "bindings/qt/colours.h"

#include <algorithm>
#include <cmath>

namespace korvane::qt {
namespace {

// What is usually held to be enough for texts of normal size.
constexpr double kReadable = 4.5;

double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

}  // namespace

QColor ToQt(platform::Colour colour) {
    return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

platform::Colour FromQt(const QColor& colour) {
    return platform::Rgb(colour.red(), colour.green(), colour.blue());
}

double Contrast(const QColor& a, const QColor& b) {
    const double x = Luminance(a) + 0.05;
    const double y = Luminance(b) + 0.05;
    return std::max(x, y) / std::min(x, y);
}

QColor MadeReadable(const QColor& colour, const QColor& other) {
    if (Contrast(colour, other) >= kReadable) return colour;
    // Towards the end that leaves more room.
    const bool lighten = Contrast(Qt::white, other) > Contrast(Qt::black, other);
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    colour.getHslF(&hue, &saturation, &lightness);
    hue = std::max(hue, 0.0F);  // grey has none
    QColor result = colour;
    constexpr float kStep = 0.02F;
    while (Contrast(result, other) < kReadable) {
        lightness += lighten ? kStep : -kStep;
        if (lightness <= 0 || lightness >= 1) return lighten ? Qt::white : Qt::black;
        result = QColor::fromHslF(hue, saturation, lightness);
    }
    return result;
}

QColor LineColour(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    return window.lightnessF() < 0.5F ? window.lighter(190) : window.darker(140);
}

QColor TextColour(platform::Colour colour, const QPalette& palette, QPalette::ColorRole text,
                  QPalette::ColorRole background) {
    if (colour == 0) return palette.color(text);
    return MadeReadable(ToQt(colour), palette.color(background));
}

}  // namespace korvane::qt
