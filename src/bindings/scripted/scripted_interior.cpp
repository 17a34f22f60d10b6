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
bool Covers(const Area& outer, const Area& inner) {
    return outer.top <= inner.top && outer.bottom >= inner.bottom && outer.left <= inner.left &&
           outer.right >= inner.right;
}

}  // namespace

void ScriptedInterior::Enter(const char* member) const {
    host_.Enter(member);
    RequireOpen(*place_.book);
}

std::optional<Fill> ScriptedInterior::Uniform() const {
    const auto& fills = place_.sheet->fills;
    for (auto fill = fills.rbegin(); fill != fills.rend(); ++fill) {
        if (!Overlap(fill->area, place_.area)) continue;
        if (Covers(fill->area, place_.area)) return *fill;
        return std::nullopt;  // a part has this fill, the rest another
    }
    return Fill{place_.area, kNoFill, kWhite};
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
