#include "bindings/calc/kept_cell.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/NameToken.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/sheet/XArrayFormulaTokens.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/table/CellContentType.hpp>

#include "bindings/calc/errors.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

bool IsSame(const CellAddress& a, const CellAddress& b) {
    return a.Sheet == b.Sheet && a.Row == b.Row && a.Column == b.Column;
}

// Error names are lost in tokens, the Booleans of an array constant come back as
// other numbers, and references to tables do not calculate when they come back:
// such a formula goes back as the office's own text.
bool GoesBackAsText(const Tokens& tokens, const OpCodes& codes) {
    css::sheet::NameToken name;
    for (const auto& token : tokens) {
        if (token.OpCode == codes.push && !token.Data.hasValue()) return true;
        if (token.Data.getValueTypeClass() == css::uno::TypeClass_SEQUENCE) return true;
        if ((token.Data >>= name) && token.OpCode != codes.name &&
            token.OpCode != codes.databaseArea) {
            return true;
        }
    }
    return false;
}

// A reference whose row or column alone was deleted ("B#REF!"): Calc cannot read it
// again, neither as tokens nor as a text.
bool IsHalfDeleted(const css::uno::Any& data) {
    using namespace css::sheet::ReferenceFlags;
    const auto isHalf = [](const css::sheet::SingleReference& reference) {
        return ((reference.Flags & COLUMN_DELETED) != 0) != ((reference.Flags & ROW_DELETED) != 0);
    };
    css::sheet::SingleReference single;
    css::sheet::ComplexReference both;
    if (data >>= single) return isHalf(single);
    return (data >>= both) && (isHalf(both.Reference1) || isHalf(both.Reference2));
}

const rtl::OUString& NumberFormat() {
    static const rtl::OUString name = ToOUString(u"NumberFormat");
    return name;
}

// "{=…}" without the brackets.
rtl::OUString WithoutBraces(const rtl::OUString& formula) {
    const std::u16string text = ToText(formula);
    if (!text.starts_with(u'{') || !text.ends_with(u'}')) return formula;
    return ToOUString(text.substr(1, text.size() - 2));
}

}  // namespace

void KeptCell::Remember(const CellAddress& at, const Reference<css::table::XCell>& cell,
                        const std::u16string& shown) {
    if (changed_ && content_ && IsSame(content_->at, at)) return;
    Content content;
    content.at = at;
    content.shown = shown;
    content.formula = cell->getFormula();
    content.error = cell->getError();
    content.isFormula = cell->getType() == css::table::CellContentType_FORMULA;
    const Reference<css::sheet::XArrayFormulaRange> array(cell, css::uno::UNO_QUERY);
    content.isArray = array.is() && array->getArrayFormula().getLength() > 0;
    if (content.isArray) {
        content.tokens =
            Reference<css::sheet::XArrayFormulaTokens>(cell, UNO_QUERY_THROW)->getArrayTokens();
    } else if (content.isFormula) {
        content.tokens = Reference<css::sheet::XFormulaTokens>(cell, UNO_QUERY_THROW)->getTokens();
    }
    Reference<css::beans::XPropertySet>(cell, UNO_QUERY_THROW)->getPropertyValue(NumberFormat()) >>=
        content.numberFormat;
    content.hasOwnFormat =
        Reference<css::beans::XPropertyState>(cell, UNO_QUERY_THROW)
            ->getPropertyState(NumberFormat()) == css::beans::PropertyState_DIRECT_VALUE;
    content_ = std::move(content);
    changed_ = false;
}

bool KeptCell::Holds(const CellAddress& at, const std::u16string& shown) const {
    return HoldsCell(at) && content_->shown == shown;
}

bool KeptCell::HoldsCell(const CellAddress& at) const {
    return content_ && IsSame(content_->at, at);
}

std::optional<CellAddress> KeptCell::ChangedCell() const {
    return content_ && changed_ ? std::optional(content_->at) : std::nullopt;
}

bool KeptCell::CanBePutBack(const OpCodes& codes) const {
    if (!content_) return true;
    for (const auto& token : content_->tokens) {
        if (IsHalfDeleted(token.Data)) return false;
    }
    if (content_->error != 0) return true;
    for (const auto& token : content_->tokens) {
        // A word that is no text constant is one that Calc did not understand.
        const bool isWord = token.Data.getValueTypeClass() == css::uno::TypeClass_STRING;
        if (isWord && token.OpCode != codes.push) return false;
    }
    return true;
}

void KeptCell::MarkChanged(const CalcDocument& document, const std::u16string& written) {
    changed_ = true;
    if (!noted_.IsWanted() || !content_) return;
    FormulaNote note;
    note.url = ToText(document.model()->getURL());
    note.sheet = document.SheetName(content_->at.Sheet);
    note.column = content_->at.Column;
    note.row = content_->at.Row;
    note.before = ToText(content_->formula);
    note.beforeIsFormula = content_->isFormula;
    note.hadOwnFormat = content_->hasOwnFormat;
    note.written = written;
    noted_.Begin(note);
}

void KeptCell::NoteWritten(const Reference<css::table::XCell>& cell) {
    if (noted_.IsWanted()) noted_.Complete(ToText(cell->getFormula()));
}

void KeptCell::PutBack(const Reference<css::table::XCell>& cell, Silence& silence,
                       const OpCodes& codes) {
    // Untouched, the cell is not even written: that could change what it shows.
    if (!content_ || !changed_) return;
    const Content& content = *content_;
    const auto asText = [&] {
        silence.BeforeWrite();
        if (content.isArray) {
            Reference<css::sheet::XArrayFormulaRange>(cell, UNO_QUERY_THROW)
                ->setArrayFormula(WithoutBraces(content.formula));
        } else {
            cell->setFormula(content.formula);
        }
    };
    if (!content.isFormula || GoesBackAsText(content.tokens, codes)) {
        asText();
    } else {
        silence.BeforeWrite();
        if (content.isArray) {
            Reference<css::sheet::XArrayFormulaTokens>(cell, UNO_QUERY_THROW)
                ->setArrayTokens(content.tokens);
        } else {
            Reference<css::sheet::XFormulaTokens>(cell, UNO_QUERY_THROW)->setTokens(content.tokens);
        }
        cell->getValue();  // calculates it
        if (cell->getFormula() != content.formula || cell->getError() != content.error) asText();
    }
    // Calculating comes first: a formula in a cell of the general format gives the
    // cell its own, such as that of Booleans.
    cell->getValue();
    const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
    sal_Int32 format = 0;
    properties->getPropertyValue(NumberFormat()) >>= format;
    if (format != content.numberFormat) {
        silence.BeforeWrite();
        if (content.hasOwnFormat) {
            css::uno::Any value;
            value <<= content.numberFormat;
            properties->setPropertyValue(NumberFormat(), value);
        } else {
            Reference<css::beans::XPropertyState>(cell, UNO_QUERY_THROW)
                ->setPropertyToDefault(NumberFormat());
        }
    }
    if (cell->getFormula() != content.formula) Fail(u"The cell's formula could not be put back");
    changed_ = false;
    noted_.End();
}

}  // namespace korvane::calc
