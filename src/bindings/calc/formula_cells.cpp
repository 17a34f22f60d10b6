#include "bindings/calc/formula_cells.h"

#include <algorithm>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <utility>

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

std::vector<std::u16string> FormulaCells(const DocumentPtr& document) {
    return Ask(document, [&] {
        std::vector<std::u16string> addresses;
        const std::u16string book = document->FileName();
        for (int sheet = 0; sheet < document->SheetCount(); ++sheet) {
            const Reference<css::sheet::XCellRangesQuery> query(document->Sheet(sheet),
                                                                UNO_QUERY_THROW);
            std::vector<std::pair<std::int32_t, std::int32_t>> cells;  // row, column
            const auto found = query->queryContentCells(css::sheet::CellFlags::FORMULA);
            for (const auto& part : found->getRangeAddresses()) {
                for (sal_Int32 row = part.StartRow; row <= part.EndRow; ++row) {
                    for (sal_Int32 column = part.StartColumn; column <= part.EndColumn; ++column) {
                        cells.emplace_back(row + 1, column + 1);
                    }
                }
            }
            std::sort(cells.begin(), cells.end());
            const std::u16string prefix = SheetPrefix(book, document->SheetName(sheet));
            for (const auto& [row, column] : cells) {
                addresses.push_back(prefix + AreaText({row, column, row, column}, true, true));
            }
        }
        return addresses;
    });
}

}  // namespace korvane::calc
