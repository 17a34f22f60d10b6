#include "bindings/calc/formula_cells.h"

#include <algorithm>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <utility>

#include "bindings/calc/excel_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

bool HoldsConstantOfExcel(const CalcDocument& document, const Reference<css::table::XCell>& cell) {
    if (Reference<css::sheet::XArrayFormulaRange>(cell, UNO_QUERY_THROW)
            ->getArrayFormula()
            .getLength() > 0) {
        return false;
    }
    return IsConstantOfExcel(
        document, Reference<css::sheet::XFormulaTokens>(cell, UNO_QUERY_THROW)->getTokens());
}

using Places = std::vector<std::pair<std::int32_t, std::int32_t>>;  // row, column

Places PlacesOf(const CalcDocument& document, int sheet) {
    Places places;
    const SheetRef cells = document.Sheet(sheet);
    const bool ofExcel = IsExcelFile(document.FileName());
    const auto found = Reference<css::sheet::XCellRangesQuery>(cells, UNO_QUERY_THROW)
                           ->queryContentCells(css::sheet::CellFlags::FORMULA);
    for (const auto& part : found->getRangeAddresses()) {
        for (sal_Int32 row = part.StartRow; row <= part.EndRow; ++row) {
            for (sal_Int32 column = part.StartColumn; column <= part.EndColumn; ++column) {
                if (ofExcel &&
                    HoldsConstantOfExcel(document, cells->getCellByPosition(column, row))) {
                    continue;
                }
                places.emplace_back(row + 1, column + 1);
            }
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

}  // namespace

bool IsConstantOfExcel(const CalcDocument& document, const Tokens& tokens) {
    return document.formulas().IsConstant(tokens) && IsExcelFile(document.FileName());
}

std::vector<std::u16string> FormulaCells(const DocumentPtr& document) {
    return Ask(document, [&] {
        std::vector<std::u16string> addresses;
        const std::u16string book = document->FileName();
        for (int sheet = 0; sheet < document->SheetCount(); ++sheet) {
            const std::u16string prefix = SheetPrefix(book, document->SheetName(sheet));
            for (const auto& [row, column] : PlacesOf(*document, sheet)) {
                addresses.push_back(prefix + AreaText({row, column, row, column}, true, true));
            }
        }
        return addresses;
    });
}

}  // namespace korvane::calc
