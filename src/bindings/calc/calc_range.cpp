#include "bindings/calc/calc_range.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "bindings/calc/calc_interior.h"
#include "bindings/calc/calc_names.h"
#include "bindings/calc/calc_sheets.h"
#include "bindings/calc/cell_values.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

// No array of values is larger: a caller that wanted more would have no use for it.
constexpr std::int64_t kMostValues = 4'000'000;

bool IsVisible(const CalcDocument& document, int sheet) {
    bool visible = true;
    Reference<css::beans::XPropertySet>(document.Sheet(sheet), UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"IsVisible")) >>= visible;
    return visible;
}

bool IsScientific(const CalcDocument& document, sal_Int32 format) {
    sal_Int16 type = 0;
    Reference<css::util::XNumberFormatsSupplier>(document.model(), UNO_QUERY_THROW)
        ->getNumberFormats()
        ->getByKey(format)
        ->getPropertyValue(ToOUString(u"Type")) >>= type;
    return (type & css::util::NumberFormat::SCIENTIFIC) != 0;
}

// Where a number's format does not say how, Calc writes three digits of an
// exponent and Excel two.
std::u16string TextOf(const CalcDocument& document, const Reference<css::table::XCell>& cell) {
    std::u16string text = DisplayedText(cell);
    if (text.find(u'E') == std::u16string::npos ||
        text.find_first_not_of(u"-0123456789.E+") != std::u16string::npos) {
        return text;
    }
    const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
    sal_Int32 result = css::sheet::FormulaResult::VALUE;
    sal_Int32 format = 0;
    if (cell->getType() == css::table::CellContentType_TEXT) return text;
    if (cell->getType() == css::table::CellContentType_FORMULA) {
        properties->getPropertyValue(ToOUString(u"FormulaResultType2")) >>= result;
    }
    properties->getPropertyValue(ToOUString(u"NumberFormat")) >>= format;
    const bool isWritten =
        result != css::sheet::FormulaResult::VALUE || IsScientific(document, format);
    return isWritten ? text : ShownText(text);
}

}  // namespace

host::RangePtr CalcRange::Make(const DocumentPtr& document, int sheet, const Area& area) {
    return std::make_shared<CalcRange>(document, document->Cells(sheet, area));
}

css::table::CellRangeAddress CalcRange::Where() const {
    return Reference<css::sheet::XCellRangeAddressable>(cells_, UNO_QUERY_THROW)->getRangeAddress();
}

Area CalcRange::AreaOf() const {
    const auto where = Where();
    return {where.StartRow + 1, where.StartColumn + 1, where.EndRow + 1, where.EndColumn + 1};
}

CellAddress CalcRange::FirstAddress() const {
    const auto where = Where();
    return {where.Sheet, where.StartColumn, where.StartRow};
}

CalcRange::CellRef CalcRange::FirstCell() const { return cells_->getCellByPosition(0, 0); }

korvane::Value CalcRange::Value() {
    return Ask(document_, [&] {
        if (AreaOf().IsCell()) return ValueOf(*document_, FirstCell());
        return BlockOf([](const CalcRange& range, sal_Int32 column, sal_Int32 row) {
            return ValueOf(*range.document_, range.cells_->getCellByPosition(column, row));
        });
    });
}

// Cells outside the used area are empty, whatever is asked of them; inside it
// each one is read.
korvane::Value CalcRange::BlockOf(korvane::Value (*read)(const CalcRange&, sal_Int32, sal_Int32)) {
    const Area area = AreaOf();
    if (area.Count() > kMostValues) Fail(u"The range has too many cells to be read at once");
    const Area occupied = Occupied();
    Array array;
    array.rows = static_cast<std::size_t>(area.bottom - area.top + 1);
    array.columns = static_cast<std::size_t>(area.right - area.left + 1);
    array.cells.resize(array.rows * array.columns);
    for (std::int32_t row = area.top; row <= occupied.bottom; ++row) {
        for (std::int32_t column = area.left; column <= occupied.right; ++column) {
            const auto at = static_cast<std::size_t>(row - area.top) * array.columns +
                            static_cast<std::size_t>(column - area.left);
            array.cells[at] = read(*this, column - area.left, row - area.top);
        }
    }
    return korvane::Value(std::move(array));
}

Area CalcRange::Occupied() const {
    Area area = AreaOf();
    const auto cursor = document_->Sheet(Where().Sheet)->createCursor();
    Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
    const auto end =
        Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)->getRangeAddress();
    area.bottom = std::min(area.bottom, std::max(end.EndRow + 1, area.top));
    area.right = std::min(area.right, std::max(end.EndColumn + 1, area.left));
    return area;
}

std::int64_t CalcRange::CountLarge() {
    return Ask(document_, [&] { return AreaOf().Count(); });
}

korvane::Value CalcRange::Text() {
    return Ask(document_, [&]() -> korvane::Value {
        const Area area = AreaOf();
        const auto first = FirstCell();
        const std::u16string text = TextOf(*document_, first);
        // Calc displays some errors by number ("Err:502").
        const auto error = HostError(first->getError());
        const korvane::Value shown = error ? korvane::Value(*error) : korvane::Value(text);
        if (area.IsCell()) return shown;
        const Area occupied = Occupied();
        if (occupied.Count() != area.Count() && !text.empty()) return korvane::Value(Value::Null{});
        for (std::int32_t row = 0; row <= occupied.bottom - area.top; ++row) {
            for (std::int32_t column = 0; column <= occupied.right - area.left; ++column) {
                if (DisplayedText(cells_->getCellByPosition(column, row)) != text) {
                    return korvane::Value(korvane::Value::Null{});
                }
            }
        }
        return shown;
    });
}

std::u16string CalcRange::Address(const host::AddressForm& form) {
    return Ask(document_, [&] {
        std::u16string text = AreaText(AreaOf(), form.RowAbsolute, form.ColumnAbsolute);
        if (!form.External) return text;
        return SheetPrefix(document_->FileName(), document_->SheetName(Where().Sheet)) + text;
    });
}

host::WorksheetPtr CalcRange::Worksheet() {
    return Ask(document_, [&]() -> host::WorksheetPtr {
        return std::make_shared<CalcWorksheet>(document_, document_->Sheet(Where().Sheet));
    });
}

host::NamePtr CalcRange::Name() {
    return Ask(document_, [&] { return NameOfCells(document_, cells_); });
}

host::RangePtr CalcRange::EntireRow() {
    return Ask(document_, [&]() -> host::RangePtr {
        const Area area = AreaOf();
        return std::make_shared<CalcRange>(
            document_, document_->Cells(Where().Sheet, {area.top, 1, area.bottom, kSheetColumns}),
            Extent::kRows);
    });
}

host::RangePtr CalcRange::EntireColumn() {
    return Ask(document_, [&]() -> host::RangePtr {
        const Area area = AreaOf();
        return std::make_shared<CalcRange>(
            document_, document_->Cells(Where().Sheet, {1, area.left, kSheetRows, area.right}),
            Extent::kColumns);
    });
}

korvane::Value CalcRange::Hidden() {
    return Ask(document_, [&]() -> korvane::Value {
        if (extent_ == Extent::kCells) Fail(u"Only entire rows and columns are hidden");
        const Reference<css::table::XColumnRowRange> lines(cells_, UNO_QUERY_THROW);
        const Area area = AreaOf();
        const auto isHidden = [](const Reference<css::container::XIndexAccess>& all, sal_Int32 at) {
            bool visible = true;
            Reference<css::beans::XPropertySet>(all->getByIndex(at), UNO_QUERY_THROW)
                ->getPropertyValue(ToOUString(u"IsVisible")) >>= visible;
            return !visible;
        };
        const bool rows = extent_ == Extent::kRows;
        const Reference<css::container::XIndexAccess> all(
            rows ? Reference<css::uno::XInterface>(lines->getRows())
                 : Reference<css::uno::XInterface>(lines->getColumns()),
            UNO_QUERY_THROW);
        const bool first = isHidden(all, 0);
        const std::int32_t count = rows ? area.bottom - area.top + 1 : area.right - area.left + 1;
        if (count == 1) return korvane::Value(first);
        // Of many lines the office tells the visible stretches at once: asked of
        // one column (or row) that is itself visible.
        const auto sheet = document_->Sheet(Where().Sheet);
        const Reference<css::table::XColumnRowRange> whole(sheet, UNO_QUERY_THROW);
        const Reference<css::container::XIndexAccess> others(
            rows ? Reference<css::uno::XInterface>(whole->getColumns())
                 : Reference<css::uno::XInterface>(whole->getRows()),
            UNO_QUERY_THROW);
        sal_Int32 line = 0;
        while (line + 1 < others->getCount() && isHidden(others, line)) ++line;
        const Area strip = rows ? Area{area.top, line + 1, area.bottom, line + 1}
                                : Area{line + 1, area.left, line + 1, area.right};
        std::int64_t visible = 0;
        const Reference<css::sheet::XCellRangesQuery> query(document_->Cells(Where().Sheet, strip),
                                                            UNO_QUERY_THROW);
        for (const auto& part : query->queryVisibleCells()->getRangeAddresses()) {
            visible +=
                rows ? part.EndRow - part.StartRow + 1 : part.EndColumn - part.StartColumn + 1;
        }
        if (visible == 0) return korvane::Value(true);
        if (visible == count) return korvane::Value(false);
        return korvane::Value(korvane::Value::Null{});
    });
}

host::InteriorPtr CalcRange::Interior() {
    return Ask(document_, [&]() -> host::InteriorPtr {
        return std::make_shared<CalcInterior>(document_, cells_);
    });
}

void CalcRange::Select() {
    Ask(document_, [&] { GoTo(true); });
}

void CalcRange::Activate() {
    Ask(document_, [&] { GoTo(false); });
}

// A hidden sheet cannot be shown, but its cells can be the active ones all the
// same: what depends on the active cell asks the document, not the view.
void CalcRange::GoTo(bool selectAll) {
    const CellAddress first = FirstAddress();
    const auto controller = document_->controller();
    const Reference<css::sheet::XSpreadsheetView> view(controller, UNO_QUERY);
    const Reference<css::view::XSelectionSupplier> selection(controller, UNO_QUERY);
    if (view.is() && selection.is() && IsVisible(*document_, first.Sheet)) {
        view->setActiveSheet(document_->Sheet(first.Sheet));
        css::uno::Any selected;
        if (selectAll) {
            selected <<= cells_;
        } else {
            selected <<= cells_->getCellByPosition(0, 0);
        }
        selection->select(selected);
    }
    document_->SetActiveCell(first);
    if (selectAll) document_->SetSelection(AreaOf());
}

}  // namespace korvane::calc
