#include "bindings/calc/calc_interior.h"

#include "bindings/calc/errors.h"
#include "bindings/calc/tint_ledger.h"

namespace korvane::calc {

namespace {

// Red and blue change places between the two hosts.
sal_Int32 Swapped(sal_Int32 color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

// The indices are whole numbers of a few digits.
constexpr double kLargestIndex = 1e6;

}  // namespace

std::optional<sal_Int32> CalcInterior::Color(const Fills& fills) const {
    if (fills.parts.empty()) Fail(u"The cells are gone");
    if (!fills.LookAlike()) return std::nullopt;
    return fills.parts.front().fill.color;
}

// Calc would ignore the colour without a word.
void CalcInterior::RequireWritable() const {
    if (IsProtected(*document_, BlockOf(cells_).Sheet)) Fail(u"The sheet is protected");
}

korvane::Value CalcInterior::ColorIndex() {
    return Ask(document_, [&] {
        if (!Color(FillsOf(cells_))) return korvane::Value(korvane::Value::Null{});
        return korvane::Value(document_->tints().IndexOf(cells_));
    });
}

void CalcInterior::SetColorIndex(const korvane::Value& index) {
    Ask(document_, [&] {
        const double* const number = index.Number();
        if (number == nullptr) Fail(u"A colour index is a number");
        if (!(*number > -kLargestIndex && *number < kLargestIndex)) {
            Fail(u"There is no such colour index");
        }
        RequireWritable();
        document_->tints().Write(cells_, static_cast<int>(*number));
    });
}

korvane::Value CalcInterior::Color() {
    return Ask(document_, [&] {
        const auto color = Color(FillsOf(cells_));
        if (!color) return korvane::Value(korvane::Value::Null{});
        return korvane::Value(static_cast<double>(*color == kNoFill ? 0xFFFFFF : Swapped(*color)));
    });
}

void CalcInterior::SetColor(double color) {
    Ask(document_, [&] {
        if (!(color >= 0 && color <= 0xFFFFFF)) Fail(u"There is no such colour");
        RequireWritable();
        document_->tints().Write(cells_, Fill{Swapped(static_cast<sal_Int32>(color)), true});
    });
}

}  // namespace korvane::calc
