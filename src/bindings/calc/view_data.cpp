#include "bindings/calc/view_data.h"

#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "base/number.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

std::vector<std::u16string_view> Split(std::u16string_view text, char16_t mark) {
    std::vector<std::u16string_view> parts;
    for (;;) {
        const auto at = text.find(mark);
        parts.push_back(text.substr(0, at));
        if (at == std::u16string_view::npos) return parts;
        text.remove_prefix(at + 1);
    }
}

std::optional<sal_Int32> Whole(std::u16string_view text) {
    const auto number = ParseNumber(text);
    if (!number || *number < 0 || *number > 1e9) return std::nullopt;
    return static_cast<sal_Int32>(*number);
}

}  // namespace

// The view's own description, "zoom;sheet;tabs;sheet 0;sheet 1;…", each sheet
// "column/row/…" ("+" in place of "/" for very tall documents).
std::optional<css::table::CellAddress> ActiveCellOfView(
    const css::uno::Reference<css::frame::XController>& controller) {
    if (!controller.is()) return std::nullopt;
    rtl::OUString described;
    if (!(controller->getViewData() >>= described)) return std::nullopt;
    const std::u16string text = ToText(described);
    const auto parts = Split(text, u';');
    const auto sheet = parts.size() > 1 ? Whole(parts[1]) : std::nullopt;
    if (!sheet || parts.size() <= static_cast<std::size_t>(*sheet) + 3) return std::nullopt;
    const std::u16string_view own = parts[static_cast<std::size_t>(*sheet) + 3];
    const auto cell = Split(own, own.find(u'/') == std::u16string_view::npos ? u'+' : u'/');
    if (cell.size() < 2) return std::nullopt;
    const auto column = Whole(cell[0]);
    const auto row = Whole(cell[1]);
    if (!column || !row) return std::nullopt;
    return css::table::CellAddress(static_cast<sal_Int16>(*sheet), *column, *row);
}

std::optional<css::table::CellRangeAddress> SelectionOfView(
    const Reference<css::frame::XController>& controller) {
    const Reference<css::view::XSelectionSupplier> supplier(controller, UNO_QUERY);
    if (!supplier.is()) return std::nullopt;
    const Reference<css::sheet::XCellRangeAddressable> cells(supplier->getSelection(), UNO_QUERY);
    if (!cells.is()) return std::nullopt;
    return cells->getRangeAddress();
}

std::u16string DescribeView(const Reference<css::frame::XController>& controller) {
    std::u16string text;
    const auto add = [&text](sal_Int32 number) {
        for (const char digit : std::to_string(number) + ' ') text += static_cast<char16_t>(digit);
    };
    const auto cell = ActiveCellOfView(controller);
    if (!cell) return text;
    add(cell->Sheet);
    add(cell->Column);
    add(cell->Row);
    if (const auto where = SelectionOfView(controller)) {
        for (const sal_Int32 number :
             {where->StartColumn, where->StartRow, where->EndColumn, where->EndRow}) {
            add(number);
        }
    } else {
        const Reference<css::view::XSelectionSupplier> supplier(controller, UNO_QUERY);
        if (!supplier.is()) return text;
        const Reference<css::sheet::XSheetCellRanges> several(supplier->getSelection(), UNO_QUERY);
        if (several.is()) text += ToText(several->getRangeAddressesAsString());
    }
    return text;
}

}  // namespace korvane::calc
