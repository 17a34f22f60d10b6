#include <algorithm>

#include "base/error.h"
#include "base/palette.h"
#include "bindings/scripted/objects.h"

namespace korvane::scripted {
namespace {

constexpr int kNoFill = -4142;
constexpr double kWhite = 0xFFFFFF;

bool Overlap(const Area& a, const Area& b) {
    return a.top <= b.bottom && b.top <= a.bottom && a.left <= b.right && b.left <= a.right;
}
// What is left of `area` without `hole`, which overlaps it: at most four blocks.
std::vector<Area> Around(const Area& area, const Area& hole) {
    std::vector<Area> parts;
    const std::int32_t top = std::max(area.top, hole.top);
    const std::int32_t bottom = std::min(area.bottom, hole.bottom);
    if (area.top < top) parts.push_back({area.top, area.left, top - 1, area.right});
    if (bottom < area.bottom) parts.push_back({bottom + 1, area.left, area.bottom, area.right});
    if (area.left < hole.left) parts.push_back({top, area.left, bottom, hole.left - 1});
    if (hole.right < area.right) parts.push_back({top, hole.right + 1, bottom, area.right});
    return parts;
}

// The one fill that the first `count` of `fills` give an area; nothing when its
// cells differ.
std::optional<Fill> UniformFill(const std::vector<Fill>& fills, std::size_t count,
                                const Area& area) {
    while (count-- > 0) {
        const Fill& fill = fills[count];
        if (!Overlap(fill.area, area)) continue;
        for (const Area& part : Around(area, fill.area)) {
            const auto other = UniformFill(fills, count, part);
            if (!other || other->colorIndex != fill.colorIndex || other->color != fill.color) {
                return std::nullopt;
            }
        }
        return fill;
    }
    return Fill{area, kNoFill, kWhite};
}

}  // namespace

void ScriptedInterior::Enter(const char* member) const {
    host_.Enter(member);
    RequireOpen(*place_.book);
}

std::optional<Fill> ScriptedInterior::Uniform() const {
    const auto& fills = place_.sheet->fills;
    return UniformFill(fills, fills.size(), place_.area);
}

korvane::Value ScriptedInterior::ColorIndex() {
    Enter("Interior.ColorIndex");
    const auto fill = Uniform();
    return fill ? korvane::Value(fill->colorIndex) : korvane::Value(korvane::Value::Null{});
}

void ScriptedInterior::SetColorIndex(const korvane::Value& index) {
    Enter("Interior.SetColorIndex");
    if (place_.sheet->isProtected) throw Error(kErrorApplication, u"The sheet is protected");
    if (!index.Number()) throw Error(kErrorTypeMismatch, u"Type mismatch");
    const int number = static_cast<int>(*index.Number());
    place_.sheet->fills.push_back(
        {place_.area, number, number < 1 ? kWhite : PaletteColor(number).value_or(kWhite)});
}

korvane::Value ScriptedInterior::Color() {
    Enter("Interior.Color");
    const auto fill = Uniform();
    return fill ? korvane::Value(fill->color) : korvane::Value(korvane::Value::Null{});
}

void ScriptedInterior::SetColor(double color) {
    Enter("Interior.SetColor");
    if (place_.sheet->isProtected) throw Error(kErrorApplication, u"The sheet is protected");
    place_.sheet->fills.push_back({place_.area, NearestPaletteIndex(color), color});
}

}  // namespace korvane::scripted
