#include "bindings/calc/cell_values.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

sal_Int32 Property(const Reference<css::table::XCell>& cell, const char16_t* name) {
    sal_Int32 value = 0;
    Reference<css::beans::XPropertySet>(cell, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(name)) >>= value;
    return value;
}

// A formula's Boolean in a cell of the general format: only the display knows.
// The office writes both words in capitals, in its own language. In a cell with
// another format nothing knows: there a word may be the format's own.
bool IsDisplayedAsWord(const Reference<css::table::XCell>& cell) {
    const std::u16string text = DisplayedText(cell);
    for (const char16_t ch : text) {
        if (ch < u'A') return false;  // digits, signs, blanks
    }
    return !text.empty() && text.find(u"E") != 0;
}

Value FormulaResult(const CalcDocument& document, const Reference<css::table::XCell>& cell,
                    bool withFormat) {
    const double number = cell->getValue();  // calculates what is not up to date
    if (const auto error = HostError(cell->getError())) return Value(*error);
    if (Property(cell, u"FormulaResultType2") == css::sheet::FormulaResult::STRING) {
        return Value(TextIn(cell));
    }
    if (number == 0 || number == 1) {
        const auto kind = document.KindOfFormat(Property(cell, u"NumberFormat"));
        if (kind == CalcDocument::NumberKind::kBoolean ||
            (kind == CalcDocument::NumberKind::kGeneral && IsDisplayedAsWord(cell))) {
            return Value(number != 0);
        }
    }
    if (withFormat &&
        document.KindOfFormat(Property(cell, u"NumberFormat")) == CalcDocument::NumberKind::kDate) {
        return Value(Value::Date{number + document.DateOffset()});
    }
    return Value(number);
}

}  // namespace

std::u16string TextIn(const Reference<css::table::XCell>& cell) {
    rtl::OUString text;
    Reference<css::sheet::XCellRangeData>(cell, UNO_QUERY_THROW)->getDataArray()[0][0] >>= text;
    return ToText(text);
}

std::u16string DisplayedText(const Reference<css::table::XCell>& cell) {
    return ToText(Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->getString());
}

Value ValueOf(const CalcDocument& document, const Reference<css::table::XCell>& cell) {
    switch (cell->getType()) {
        case css::table::CellContentType_EMPTY: return Value();
        case css::table::CellContentType_TEXT: return Value(TextIn(cell));
        case css::table::CellContentType_VALUE: {
            const double number = cell->getValue();
            switch (document.KindOfFormat(Property(cell, u"NumberFormat"))) {
                case CalcDocument::NumberKind::kDate:
                    return Value(Value::Date{number + document.DateOffset()});
                case CalcDocument::NumberKind::kBoolean:
                    if (number == 0 || number == 1) return Value(number != 0);
                    break;
                case CalcDocument::NumberKind::kGeneral:
                case CalcDocument::NumberKind::kNumber: break;
            }
            return Value(number);
        }
        default: return FormulaResult(document, cell, true);
    }
}

Value ResultOf(const CalcDocument& document, const Reference<css::table::XCell>& cell) {
    return FormulaResult(document, cell, false);
}

}  // namespace korvane::calc
