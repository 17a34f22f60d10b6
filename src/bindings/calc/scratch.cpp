#include "bindings/calc/scratch.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XArrayFormulaTokens.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

const rtl::OUString& NumberFormat() {
    static const rtl::OUString name = ToOUString(u"NumberFormat");
    return name;
}

// The number format that all the cells have; -1 when they differ.
sal_Int32 FormatOf(const CellRangeRef& cells) {
    sal_Int32 format = -1;
    Reference<css::beans::XPropertySet>(cells, UNO_QUERY_THROW)
        ->getPropertyValue(NumberFormat()) >>= format;
    return format;
}

}  // namespace

Scratch::Scratch(const CalcDocument& document, const CellAddress& at)
    : silence_(document),
      sheet_(document.Sheet(at.Sheet)),
      at_(at),
      isProtected_(Reference<css::util::XProtectable>(sheet_, UNO_QUERY_THROW)->isProtected()) {}

bool Scratch::Touches(const Block& block) const {
    return block.firstSheet <= at_.Sheet && at_.Sheet <= block.lastSheet &&
           block.area.top <= at_.Row + 1 && block.area.bottom > at_.Row + 1 - kMostRows &&
           block.area.left <= at_.Column + kMostColumns && block.area.right > at_.Column;
}

Scratch::Content::Content(Scratch& scratch, const Tokens& tokens, int rows, int columns)
    : scratch_(scratch),
      cells_(scratch.sheet_->getCellRangeByPosition(scratch.at_.Column, scratch.at_.Row - rows + 1,
                                                    scratch.at_.Column + columns - 1,
                                                    scratch.at_.Row)),
      formatBefore_(FormatOf(cells_)) {
    if (scratch_.isProtected_) {
        scratch_.silence_.BeforeWriteToTakeBack();
        Reference<css::sheet::XFormulaTokens>(Cell(), UNO_QUERY_THROW)->setTokens(tokens);
    } else {
        scratch_.silence_.BeforeWrite();
        Reference<css::sheet::XArrayFormulaTokens>(cells_, UNO_QUERY_THROW)->setArrayTokens(tokens);
    }
}

Scratch::Content::~Content() {
    try {
        Clear();
    } catch (const css::uno::Exception&) {
        // The document has been closed meanwhile.
    }
}

Reference<css::table::XCell> Scratch::Content::Cell(int row, int column) const {
    return cells_->getCellByPosition(column, row);
}

void Scratch::Content::Clear() {
    // A protected sheet takes formulas, but nothing can be emptied there.
    if (scratch_.isProtected_) return scratch_.silence_.TakeBack();
    scratch_.silence_.BeforeWrite();
    namespace Flags = css::sheet::CellFlags;
    Reference<css::sheet::XSheetOperation>(cells_, UNO_QUERY_THROW)
        ->clearContents(Flags::VALUE | Flags::DATETIME | Flags::STRING | Flags::FORMULA);
    // A result that is a Boolean or a date has given the cell a format.
    if (FormatOf(cells_) == formatBefore_) return;
    scratch_.silence_.BeforeWrite();
    Reference<css::beans::XPropertyState>(cells_, UNO_QUERY_THROW)
        ->setPropertyToDefault(NumberFormat());
    if (formatBefore_ < 0 || FormatOf(cells_) == formatBefore_) return;
    scratch_.silence_.BeforeWrite();
    css::uno::Any format;
    format <<= formatBefore_;
    Reference<css::beans::XPropertySet>(cells_, UNO_QUERY_THROW)
        ->setPropertyValue(NumberFormat(), format);
}

}  // namespace korvane::calc
