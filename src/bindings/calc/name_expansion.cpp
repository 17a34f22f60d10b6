#include "bindings/calc/name_expansion.h"

#include <algorithm>
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

// Names that use names: deeper ones stay as they are.
constexpr int kDeepest = 64;
// A longer text is no formula any more.
constexpr std::size_t kLongest = 65'536;

// What depends on the cell: where it is, and the sheet that a text means.
constexpr const char16_t* kOfTheCell[] = {u"ROW",  u"COLUMN",   u"SHEET",
                                          u"CELL", u"INDIRECT", u"OFFSET"};

bool IsRelative(const css::sheet::SingleReference& reference) {
    namespace Flags = css::sheet::ReferenceFlags;
    return (reference.Flags &
            (Flags::COLUMN_RELATIVE | Flags::ROW_RELATIVE | Flags::SHEET_RELATIVE)) != 0;
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

bool IsSame(const CellAddress& a, const CellAddress& b) {
    return a.Sheet == b.Sheet && a.Row == b.Row && a.Column == b.Column;
}

}  // namespace

NameExpansion::NameExpansion(const CalcDocument& document, const DocumentChanges& changes)
    : document_(document), changes_(changes) {
    const auto& byName = document.formulas().codes().byName;
    for (const char16_t* const name : kOfTheCell) {
        if (const auto code = byName.find(name); code != byName.end())
            ofTheCell_.insert(code->second);
    }
}

ExpandedNames NameExpansion::Expand(const std::u16string& text, const CellAddress& active) {
    ForgetOthers(active);
    const auto pieces = CutFormula(text);
    ExpandedNames out;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const Piece& piece = pieces[k];
        const bool ofSheet = k > 0 && pieces[k - 1].Is(u'!');
        const bool other =
            k + 1 < pieces.size() && (pieces[k + 1].Is(u'(') || pieces[k + 1].Is(u'!'));
        if (piece.kind != Piece::kWord || ofSheet || other) {
            out.text += piece.text;
            continue;
        }
        const Known known = Look(std::u16string(piece.text));
        out.outside = out.outside || known.outside;
        if (known.replacement) {
            out.text += u'(' + *known.replacement + u')';
        } else {
            out.text += piece.text;
        }
    }
    return out;
}

void NameExpansion::ForgetOthers(const CellAddress& active) {
    if (knownWhen_ == changes_.count() && IsSame(knownAt_, active)) return;
    known_.clear();
    knownAt_ = active;
    knownWhen_ = changes_.count();
}

NameExpansion::Known NameExpansion::Look(const std::u16string& name) {
    if (depth_ >= kDeepest) return {};
    const std::u16string key = Upper(name);
    // A name that is being looked at is within itself: there it stays, and the
    // office answers the ring with an error.
    const auto [found, isNew] = known_.emplace(key, Known{});
    if (!isNew) return found->second;
    const auto range = FindNamedRange(document_, knownAt_.Sheet, name);
    if (!range.is()) return {};
    const auto tokens = Reference<css::sheet::XFormulaTokens>(range, UNO_QUERY_THROW)->getTokens();
    const std::u16string content =
        document_.formulas().Print(tokens, knownAt_, ToText(range->getContent()));
    ++depth_;
    ExpandedNames inner = Expand(content, knownAt_);
    --depth_;
    Known known;
    known.outside = inner.outside || Fetches(tokens, document_.formulas().codes());
    const bool isOfTheCell =
        HasRelativeReference(tokens) || std::any_of(tokens.begin(), tokens.end(), [&](auto& token) {
            return ofTheCell_.count(token.OpCode) != 0;
        });
    if ((isOfTheCell || inner.text != content) && inner.text.size() <= kLongest)
        known.replacement = std::move(inner.text);
    known_[key] = known;
    return known;
}

}  // namespace korvane::calc
