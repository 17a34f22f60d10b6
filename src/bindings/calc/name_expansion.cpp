#include "bindings/calc/name_expansion.h"

#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/ExternalReference.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>

#include "bindings/calc/calc_names.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// Names that use names: deeper ones are rings, which the office answers with an
// error anyway.
constexpr int kDeepest = 16;

bool IsRelative(const css::sheet::SingleReference& reference) {
    return (reference.Flags & (css::sheet::ReferenceFlags::COLUMN_RELATIVE |
                               css::sheet::ReferenceFlags::ROW_RELATIVE)) != 0;
}

bool HasRelativeReference(const Tokens& tokens) {
    for (const auto& token : tokens) {
        css::sheet::SingleReference single;
        css::sheet::ComplexReference complex;
        if ((token.Data >>= single) && IsRelative(single)) return true;
        if ((token.Data >>= complex) &&
            (IsRelative(complex.Reference1) || IsRelative(complex.Reference2))) {
            return true;
        }
    }
    return false;
}

bool Fetches(const Tokens& tokens, const OpCodes& codes) {
    css::sheet::ExternalReference external;
    for (const auto& token : tokens) {
        if (codes.fetching.count(token.OpCode) != 0 || (token.Data >>= external)) return true;
    }
    return false;
}

ExpandedNames Expand(const CalcDocument& document, const std::u16string& text, int depth) {
    const CellAddress active = document.ActiveCell();
    const auto pieces = CutFormula(text);
    ExpandedNames out;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const Piece& piece = pieces[k];
        const bool ofSheet = k > 0 && pieces[k - 1].Is(u'!');
        const bool other =
            k + 1 < pieces.size() && (pieces[k + 1].Is(u'(') || pieces[k + 1].Is(u'!'));
        const auto name = piece.kind == Piece::kWord && !ofSheet && !other && depth < kDeepest
                              ? FindNamedRange(document, active.Sheet, piece.text)
                              : Reference<css::sheet::XNamedRange>();
        if (!name.is()) {
            out.text += piece.text;
            continue;
        }
        const auto tokens =
            Reference<css::sheet::XFormulaTokens>(name, UNO_QUERY_THROW)->getTokens();
        if (Fetches(tokens, document.formulas().codes())) out.outside = true;
        const std::u16string content =
            document.formulas().Print(tokens, active, ToText(name->getContent()));
        const ExpandedNames inner = Expand(document, content, depth + 1);
        if (inner.outside) out.outside = true;
        if (HasRelativeReference(tokens) || inner.text != content) {
            out.text += u'(' + inner.text + u')';
        } else {
            out.text += piece.text;
        }
    }
    return out;
}

}  // namespace

ExpandedNames ExpandNames(const CalcDocument& document, const std::u16string& text) {
    return Expand(document, text, 0);
}

}  // namespace korvane::calc
