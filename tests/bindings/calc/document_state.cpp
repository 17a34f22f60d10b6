#include "document_state.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <sstream>

#include "base/text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

std::string Narrow(const rtl::OUString& text) { return ToUtf8(ToText(text)); }

void AppendDocument(std::ostream& out, const Reference<css::frame::XModel>& model) {
    out << "modified "
        << static_cast<int>(
               Reference<css::util::XModifiable>(model, UNO_QUERY_THROW)->isModified());
    const auto undo =
        Reference<css::document::XUndoManagerSupplier>(model, UNO_QUERY_THROW)->getUndoManager();
    for (const auto& title : undo->getAllUndoActionTitles()) out << " undo " << Narrow(title);
    for (const auto& title : undo->getAllRedoActionTitles()) out << " redo " << Narrow(title);
    const Reference<css::beans::XPropertySet> properties(model, UNO_QUERY_THROW);
    for (const char16_t* const name :
         {u"IsUndoEnabled", u"IsAdjustHeightEnabled", u"IsChangeReadOnlyEnabled"}) {
        bool on = false;
        properties->getPropertyValue(ToOUString(name)) >>= on;
        out << ' ' << ToUtf8(name) << ' ' << static_cast<int>(on);
    }
    out << " locked " << static_cast<int>(undo->isLocked()) << " controllers "
        << static_cast<int>(model->hasControllersLocked()) << '\n';
}

void AppendRow(std::ostream& out, const Reference<css::sheet::XSpreadsheet>& sheet, sal_Int32 row) {
    sal_Int32 height = 0;
    Reference<css::beans::XPropertySet>(
        Reference<css::table::XColumnRowRange>(sheet, UNO_QUERY_THROW)->getRows()->getByIndex(row),
        UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"Height")) >>= height;
    out << "row " << row << " height " << height << '\n';
}

void AppendCell(std::ostream& out, const Reference<css::table::XCell>& cell) {
    const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
    sal_Int32 format = 0;
    sal_Int32 fill = 0;
    properties->getPropertyValue(ToOUString(u"NumberFormat")) >>= format;
    properties->getPropertyValue(ToOUString(u"CellBackColor")) >>= fill;
    out << Narrow(cell->getFormula()) << " | " << cell->getValue() << ' ' << cell->getError() << ' '
        << Narrow(Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->getString()) << ' '
        << format << ' ' << fill << '\n';
}

}  // namespace

std::string StateOf(const Reference<css::frame::XModel>& model) {
    std::ostringstream out;
    AppendDocument(out, model);
    const Reference<css::container::XIndexAccess> sheets(
        Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)->getSheets(),
        UNO_QUERY_THROW);
    for (sal_Int32 k = 0; k < sheets->getCount(); ++k) {
        const Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(k), UNO_QUERY_THROW);
        const auto cursor = sheet->createCursor();
        Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
        const auto end = Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)
                             ->getRangeAddress();
        // Not the last column: where all columns are formatted, it is the last one
        // that Calc has had a reason to make, and reading a cell is a reason.
        out << Narrow(Reference<css::container::XNamed>(sheet, UNO_QUERY_THROW)->getName())
            << " to " << end.EndRow << '\n';
        for (sal_Int32 row = 0; row <= std::min(end.EndRow, sal_Int32{2000}); ++row) {
            AppendRow(out, sheet, row);
            for (sal_Int32 column = 0; column <= std::min(end.EndColumn, sal_Int32{200});
                 ++column) {
                const auto cell = sheet->getCellByPosition(column, row);
                if (cell->getType() == css::table::CellContentType_EMPTY) continue;
                out << row << ' ' << column << ' ';
                AppendCell(out, cell);
            }
        }
    }
    return out.str();
}

std::string Difference(const std::string& before, const std::string& after) {
    std::istringstream first(before);
    std::istringstream second(after);
    std::string a;
    std::string b;
    for (;;) {
        const bool moreOfFirst = static_cast<bool>(std::getline(first, a));
        const bool moreOfSecond = static_cast<bool>(std::getline(second, b));
        if (!moreOfFirst && !moreOfSecond) return {};
        if (!moreOfFirst) a = "(nothing)";
        if (!moreOfSecond) b = "(nothing)";
        if (a != b) return "before: " + a + "\nafter:  " + b;
    }
}

}  // namespace korvane::calc::testing
