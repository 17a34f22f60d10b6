// The formula members of a range: reading them, and writing them for a moment.
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XArrayFormulaTokens.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "base/number.h"
#include "bindings/calc/automatic_calculation.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/cell_values.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/formula_cells.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/kept_cell.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/table_references.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// The block of the array formula that a cell belongs to; null when none.
CellRangeRef ArrayBlock(const CalcDocument& document, int sheet, const CellRangeRef& cells) {
    const Reference<css::sheet::XArrayFormulaRange> formula(cells->getCellByPosition(0, 0),
                                                            UNO_QUERY_THROW);
    if (formula->getArrayFormula().getLength() == 0) return {};
    const Reference<css::sheet::XSheetCellRange> first(cells->getCellRangeByPosition(0, 0, 0, 0),
                                                       UNO_QUERY_THROW);
    const auto cursor = document.Sheet(sheet)->createCursorByRange(first);
    cursor->collapseToCurrentArray();
    return CellRangeRef(cursor, UNO_QUERY_THROW);
}

}  // namespace

// A member of an array formula's block that is not its first cell holds only a
// reference to it: the block's formula is the first cell's.
std::u16string CalcRange::ShownFormula(sal_Int32 column, sal_Int32 row) const {
    CellRef cell = cells_->getCellByPosition(column, row);
    switch (cell->getType()) {
        case css::table::CellContentType_EMPTY: return {};
        case css::table::CellContentType_TEXT: return TextIn(cell);
        case css::table::CellContentType_VALUE: {
            const korvane::Value value = ValueOf(*document_, cell);
            if (const auto* flag = value.Boolean()) return *flag ? u"TRUE" : u"FALSE";
            return NumberText(cell->getValue());
        }
        default: break;
    }
    const auto where = Where();
    CellAddress at(where.Sheet, where.StartColumn + column, where.StartRow + row);
    const CellRangeRef block = ArrayBlock(*document_, where.Sheet,
                                          cells_->getCellRangeByPosition(column, row, column, row));
    Tokens tokens;
    if (block.is()) {
        const auto top =
            Reference<css::sheet::XCellRangeAddressable>(block, UNO_QUERY_THROW)->getRangeAddress();
        at = CellAddress(top.Sheet, top.StartColumn, top.StartRow);
        cell = block->getCellByPosition(0, 0);
        tokens =
            Reference<css::sheet::XArrayFormulaTokens>(block, UNO_QUERY_THROW)->getArrayTokens();
    } else {
        tokens = Reference<css::sheet::XFormulaTokens>(cell, UNO_QUERY_THROW)->getTokens();
    }
    std::u16string text = document_->formulas().Print(tokens, at, ToText(cell->getFormula()));
    return !block.is() && IsConstantOfExcel(*document_, tokens) ? text : u"=" + text;
}

korvane::Value CalcRange::Formula() {
    return Ask(document_, [&] {
        if (!AreaOf().IsCell()) {
            return BlockOf([](const CalcRange& range, sal_Int32 column, sal_Int32 row) {
                return korvane::Value(range.ShownFormula(column, row));
            });
        }
        std::u16string text = ShownFormula(0, 0);
        document_->kept().Remember(FirstAddress(), FirstCell(), text);
        return korvane::Value(std::move(text));
    });
}

korvane::Value CalcRange::FormulaArray() { return Formula(); }

bool CalcRange::HasArray() {
    return Ask(document_, [&] {
        const Reference<css::sheet::XArrayFormulaRange> formula(FirstCell(), UNO_QUERY_THROW);
        return formula->getArrayFormula().getLength() > 0;
    });
}

host::RangePtr CalcRange::CurrentArray() {
    return Ask(document_, [&]() -> host::RangePtr {
        CellRangeRef block = ArrayBlock(*document_, Where().Sheet, cells_);
        if (!block.is()) Fail(u"The cell is not part of an array formula");
        const auto where =
            Reference<css::sheet::XCellRangeAddressable>(block, UNO_QUERY_THROW)->getRangeAddress();
        return Make(
            document_, where.Sheet,
            {where.StartRow + 1, where.StartColumn + 1, where.EndRow + 1, where.EndColumn + 1});
    });
}

void CalcRange::SetFormula(const std::u16string& formula) {
    Ask(document_, [&] { Write(formula, false); });
}

void CalcRange::SetFormulaArray(const std::u16string& formula) {
    Ask(document_, [&] { Write(formula, true); });
}

// Calc itself takes a plain formula on protected cells and, in place of an array
// formula's member, breaks the array. Both are refused here, as a user is.
void CalcRange::RequireWritable() const {
    if (!AreaOf().IsCell()) Fail(u"Formulas are written into single cells");
    const Reference<css::util::XProtectable> sheet(document_->Sheet(Where().Sheet),
                                                   UNO_QUERY_THROW);
    if (sheet->isProtected()) {
        css::util::CellProtection protection;
        Reference<css::beans::XPropertySet>(FirstCell(), UNO_QUERY_THROW)
            ->getPropertyValue(ToOUString(u"CellProtection")) >>= protection;
        if (protection.IsLocked) Fail(u"The cell is protected");
    }
    const CellRangeRef block = ArrayBlock(*document_, Where().Sheet, cells_);
    if (!block.is()) return;
    const auto where =
        Reference<css::sheet::XCellRangeAddressable>(block, UNO_QUERY_THROW)->getRangeAddress();
    if (where.StartRow != where.EndRow || where.StartColumn != where.EndColumn) {
        Fail(u"A part of an array cannot be changed");
    }
}

void CalcRange::Write(const std::u16string& formula, bool asArray) {
    RequireWritable();
    const CellAddress at = FirstAddress();
    const CellRef cell = FirstCell();
    KeptCell& kept = document_->kept();
    const OpCodes& codes = document_->formulas().codes();
    Silence silence(*document_);
    const AutomaticCalculation automatic(*document_);
    if (kept.Holds(at, formula)) {
        kept.PutBack(cell, silence, codes);
        return;
    }
    Tokens tokens;
    if (formula.starts_with(u'=')) {
        switch (
            document_->formulas().Read(WithoutTableReferences(*document_, formula), at, tokens)) {
            case FormulaText::Reading::kMalformed: Fail(u"The text is no formula");
            case FormulaText::Reading::kOutside: Fail(u"The formula reaches outside the document");
            case FormulaText::Reading::kReady: break;
        }
    }
    // Whatever happens to what is written now, the cell can be put back.
    if (!kept.HoldsCell(at)) kept.Remember(at, cell, ShownFormula(0, 0));
    if (!kept.CanBePutBack(codes)) Fail(u"The cell's formula could not be put back");
    kept.MarkChanged(*document_, formula);
    silence.BeforeWrite();
    if (!formula.starts_with(u'=')) {
        cell->setFormula(ToOUString(formula));
    } else if (asArray) {
        Reference<css::sheet::XArrayFormulaTokens>(cell, UNO_QUERY_THROW)->setArrayTokens(tokens);
    } else {
        Reference<css::sheet::XFormulaTokens>(cell, UNO_QUERY_THROW)->setTokens(tokens);
    }
    cell->getValue();  // calculates it
    kept.NoteWritten(cell);
    if (!IsMalformed(cell->getError())) return;
    kept.PutBack(cell, silence, codes);
    Fail(u"The text is no formula");
}

}  // namespace korvane::calc
