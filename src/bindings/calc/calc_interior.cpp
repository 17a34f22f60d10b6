#include "bindings/calc/calc_interior.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "base/palette.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr int kNone = -4142;       // xlColorIndexNone
constexpr int kAutomatic = -4105;  // xlColorIndexAutomatic
constexpr char16_t kFill[] = u"CellBackColor";

// Red and blue change places between the two hosts.
sal_Int32 Swapped(sal_Int32 color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

}  // namespace

std::optional<sal_Int32> CalcInterior::Fill() const {
    const Reference<css::beans::XPropertyState> state(cells_, UNO_QUERY_THROW);
    if (state->getPropertyState(ToOUString(kFill)) == css::beans::PropertyState_AMBIGUOUS_VALUE) {
        return std::nullopt;
    }
    sal_Int32 fill = -1;
    Reference<css::beans::XPropertySet>(cells_, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(kFill)) >>= fill;
    return fill;
}

void CalcInterior::SetFill(sal_Int32 fill) {
    const auto sheet =
        Reference<css::sheet::XSheetCellRange>(cells_, UNO_QUERY_THROW)->getSpreadsheet();
    // Calc would ignore the colour without a word.
    if (Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->isProtected()) {
        Fail(u"The sheet is protected");
    }
    Silence silence(*document_);
    silence.BeforeWrite();
    css::uno::Any value;
    value <<= fill;
    Reference<css::beans::XPropertySet>(cells_, UNO_QUERY_THROW)
        ->setPropertyValue(ToOUString(kFill), value);
}

korvane::Value CalcInterior::ColorIndex() {
    return Ask(document_, [&] {
        const auto fill = Fill();
        if (!fill) return korvane::Value(korvane::Value::Null{});
        if (*fill == -1) return korvane::Value(kNone);
        return korvane::Value(NearestPaletteIndex(Swapped(*fill)));
    });
}

void CalcInterior::SetColorIndex(const korvane::Value& index) {
    Ask(document_, [&] {
        const double* const number = index.Number();
        if (number == nullptr) Fail(u"A colour index is a number");
        const int entry = static_cast<int>(*number);
        if (entry == kNone || entry == kAutomatic) return SetFill(-1);
        const auto color = PaletteColor(entry);
        if (!color) Fail(u"There is no such colour index");
        SetFill(Swapped(static_cast<sal_Int32>(*color)));
    });
}

korvane::Value CalcInterior::Color() {
    return Ask(document_, [&] {
        const auto fill = Fill();
        if (!fill) return korvane::Value(korvane::Value::Null{});
        return korvane::Value(static_cast<double>(*fill == -1 ? 0xFFFFFF : Swapped(*fill)));
    });
}

void CalcInterior::SetColor(double color) {
    Ask(document_, [&] {
        if (!(color >= 0 && color <= 0xFFFFFF)) Fail(u"There is no such colour");
        SetFill(Swapped(static_cast<sal_Int32>(color)));
    });
}

}  // namespace korvane::calc
