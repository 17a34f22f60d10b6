#include "bindings/calc/table_references.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XDatabaseRanges.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <optional>
#include <vector>

#include "base/text.h"
#include "bindings/calc/cell_values.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

struct Table {
    css::table::CellRangeAddress all;
    bool hasHeaders = true;
    bool hasTotals = false;
};

std::optional<Table> FindTable(const CalcDocument& document, std::u16string_view name) {
    Reference<css::sheet::XDatabaseRanges> tables;
    Reference<css::beans::XPropertySet>(document.model(), UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"DatabaseRanges")) >>= tables;
    for (const auto& key : tables->getElementNames()) {
        if (!EqualIgnoringCase(ToText(key), name)) continue;
        Reference<css::sheet::XDatabaseRange> range;
        tables->getByName(key) >>= range;
        const Reference<css::beans::XPropertySet> properties(range, UNO_QUERY_THROW);
        Table table;
        table.all = range->getDataArea();
        properties->getPropertyValue(ToOUString(u"ContainsHeader")) >>= table.hasHeaders;
        properties->getPropertyValue(ToOUString(u"TotalsRow")) >>= table.hasTotals;
        return table;
    }
    return std::nullopt;
}

// The parts of "[[#This Row],[A]:[B]]": "#This Row", "A" and "B"; of "[A]" the
// one "A". "'" lets a bracket be part of a column's name.
std::vector<std::u16string> PartsOf(std::u16string_view bracket) {
    std::vector<std::u16string> parts;
    std::u16string inner(bracket.substr(1, bracket.size() - 2));
    if (!TrimBlanks(inner).starts_with(u'[')) inner = u'[' + inner + u']';
    int depth = 0;
    for (std::size_t k = 0; k < inner.size(); ++k) {
        const char16_t ch = inner[k];
        if (ch == u'[' && ++depth == 1) {
            parts.emplace_back();
        } else if (ch == u']') {
            --depth;
        } else if (depth > 0) {
            if (ch == u'\'' && k + 1 < inner.size()) ++k;
            parts.back() += inner[k];
        }
    }
    return parts;
}

std::optional<sal_Int32> FindColumn(const CalcDocument& document, const Table& table,
                                    std::u16string_view name) {
    if (!table.hasHeaders) return std::nullopt;
    const SheetRef sheet = document.Sheet(table.all.Sheet);
    for (sal_Int32 column = table.all.StartColumn; column <= table.all.EndColumn; ++column) {
        const std::u16string header =
            DisplayedText(sheet->getCellByPosition(column, table.all.StartRow));
        if (EqualIgnoringCase(TrimBlanks(header), TrimBlanks(name))) return column;
    }
    return std::nullopt;
}

std::u16string CellsOf(const CalcDocument& document, std::u16string_view name,
                       std::u16string_view bracket) {
    static constexpr char16_t kLost[] = u"#REF!";
    const auto table = FindTable(document, name);
    if (!table) return kLost;
    css::table::CellRangeAddress cells = table->all;
    const sal_Int32 firstData = cells.StartRow + (table->hasHeaders ? 1 : 0);
    const sal_Int32 lastData = cells.EndRow - (table->hasTotals ? 1 : 0);
    cells.StartRow = firstData;
    cells.EndRow = lastData;
    std::vector<sal_Int32> columns;
    bool rowsNamed = false;
    const auto addRows = [&](sal_Int32 first, sal_Int32 last) {
        cells.StartRow = rowsNamed ? std::min(cells.StartRow, first) : first;
        cells.EndRow = rowsNamed ? std::max(cells.EndRow, last) : last;
        rowsNamed = true;
    };
    for (std::u16string_view part : PartsOf(bracket)) {
        if (part.starts_with(u'@') || EqualIgnoringCase(part, u"#This Row")) {
            const sal_Int32 row = document.ActiveCell().Row;
            if (row < firstData || row > lastData) return u"#VALUE!";
            addRows(row, row);
            if (part.starts_with(u'@')) part.remove_prefix(1);
            if (part.empty() || part.starts_with(u'#')) continue;
        }
        if (EqualIgnoringCase(part, u"#All")) {
            addRows(table->all.StartRow, table->all.EndRow);
        } else if (EqualIgnoringCase(part, u"#Headers")) {
            addRows(table->all.StartRow, table->all.StartRow);
        } else if (EqualIgnoringCase(part, u"#Data")) {
            addRows(firstData, lastData);
        } else if (EqualIgnoringCase(part, u"#Totals")) {
            addRows(table->all.EndRow, table->all.EndRow);
        } else if (!part.empty()) {
            const auto column = FindColumn(document, *table, part);
            if (!column) return kLost;
            columns.push_back(*column);
        }
    }
    if (!columns.empty()) {
        cells.StartColumn = *std::min_element(columns.begin(), columns.end());
        cells.EndColumn = *std::max_element(columns.begin(), columns.end());
    }
    if (cells.EndRow < cells.StartRow) return kLost;
    return SheetPrefix(u"", document.SheetName(cells.Sheet)) +
           AreaText(
               {cells.StartRow + 1, cells.StartColumn + 1, cells.EndRow + 1, cells.EndColumn + 1},
               true, true);
}

}  // namespace

std::u16string WithoutTableReferences(const CalcDocument& document, std::u16string_view text) {
    if (text.find(u'[') == std::u16string_view::npos) return std::u16string(text);
    const auto pieces = CutFormula(text);
    std::u16string out;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const bool isTable = pieces[k].kind == Piece::kWord && k + 1 < pieces.size() &&
                             pieces[k + 1].kind == Piece::kBracket;
        if (isTable) {
            out += CellsOf(document, pieces[k].text, pieces[k + 1].text);
            ++k;
        } else {
            out += pieces[k].text;
        }
    }
    return out;
}

}  // namespace korvane::calc
