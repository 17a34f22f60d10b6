#include "base/palette.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace korvane {
namespace {

// As 0xRRGGBB, entry 1 first.
constexpr std::array<std::uint32_t, 56> kPalette{
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

struct Rgb {
    int red;
    int green;
    int blue;
};

Rgb Split(std::size_t index) {
    const auto code = static_cast<int>(kPalette[index]);
    return {code >> 16, code >> 8 & 0xFF, code & 0xFF};
}

}  // namespace

std::optional<double> PaletteColor(int index) {
    if (index < 1 || index > static_cast<int>(kPalette.size())) return std::nullopt;
    const Rgb rgb = Split(static_cast<std::size_t>(index) - 1);
    return rgb.red + 256.0 * rgb.green + 65536.0 * rgb.blue;
}

int NearestPaletteIndex(double color) {
    const auto code = static_cast<int>(color);
    int nearest = 1;
    int least = std::numeric_limits<int>::max();
    for (std::size_t k = 0; k < kPalette.size(); ++k) {
        const Rgb rgb = Split(k);
        const int red = rgb.red - (code & 0xFF);
        const int green = rgb.green - (code >> 8 & 0xFF);
        const int blue = rgb.blue - (code >> 16 & 0xFF);
        const int distance = red * red + green * green + blue * blue;
        if (distance < least) {
            least = distance;
            nearest = static_cast<int>(k) + 1;
        }
    }
    return nearest;
}

}  // namespace korvane
