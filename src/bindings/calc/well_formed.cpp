// Whether a text is a formula, in Excel's eyes. Calc's own reader mends what is
// broken (=SUM(1,2 becomes =SUM(1,2)), so that it cannot be asked.
#include <cstddef>

#include "bindings/calc/excel_text.h"

namespace korvane::calc {
namespace {

constexpr int kDeepest = 400;

class Grammar {
public:
    explicit Grammar(std::u16string_view text) : pieces_(CutFormula(text)) {}

    bool Accepts() { return Expressions(false) && at_ == pieces_.size(); }

private:
    bool More() const { return at_ < pieces_.size(); }
    bool Is(char16_t sign) const { return More() && pieces_[at_].Is(sign); }
    bool IsOneOf(std::u16string_view signs) const {
        return More() && pieces_[at_].kind == Piece::kSign &&
               signs.find(pieces_[at_].text.front()) != std::u16string_view::npos;
    }
    void SkipBlanks() {
        while (More() && pieces_[at_].kind == Piece::kBlank) ++at_;
    }

    // Expressions with "," between them: a union, or a call's arguments, of
    // which any may be left out.
    bool Expressions(bool mayBeLeftOut) {
        for (;;) {
            SkipBlanks();
            const bool leftOut = mayBeLeftOut && (Is(u',') || Is(u')'));
            if (!leftOut && !Expression()) return false;
            SkipBlanks();
            if (!Is(u',')) return true;
            ++at_;
        }
    }

    bool Expression() {
        for (;;) {
            if (!Operand()) return false;
            SkipBlanks();
            if (Is(u'<') || Is(u'>')) {
                const bool less = Is(u'<');
                ++at_;
                if (Is(u'=') || (less && Is(u'>'))) ++at_;
            } else if (IsOneOf(u"+-*/^&=:")) {
                ++at_;
            } else if (!More() || IsOneOf(u",)")) {
                return true;
            }
            // Otherwise two operands with a blank between: their intersection.
        }
    }

    bool Operand() {
        SkipBlanks();
        while (IsOneOf(u"+-@")) {
            ++at_;
            SkipBlanks();
        }
        if (!More() || !Primary()) return false;
        while (IsOneOf(u"%#")) ++at_;
        return true;
    }

    bool Primary() {
        if (Is(u'(')) return Bracketed(false);
        if (Is(u'{')) return Constants();
        if (pieces_[at_].kind == Piece::kText) {
            ++at_;
            return true;
        }
        const std::size_t start = at_;
        bool behindMark = false;  // a "!" wants something behind it
        bool quotedLast = false;  // a sheet's name wants a "!"
        while (More()) {
            const Piece::Kind kind = pieces_[at_].kind;
            if (Is(u'!')) {
                if (at_ == start || behindMark) return false;
                behindMark = true;
                quotedLast = false;
            } else if (kind == Piece::kQuoted || kind == Piece::kWord || kind == Piece::kBracket ||
                       kind == Piece::kError) {
                behindMark = false;
                quotedLast = kind == Piece::kQuoted;
            } else {
                break;
            }
            ++at_;
        }
        if (at_ == start || behindMark || (quotedLast && !Is(u':'))) return false;
        return Is(u'(') ? Bracketed(true) : true;
    }

    bool Bracketed(bool isCall) {
        if (++depth_ > kDeepest) return false;
        ++at_;
        if (!Expressions(isCall) || !Is(u')')) return false;
        ++at_;
        --depth_;
        return true;
    }

    // An array of constants.
    bool Constants() {
        bool wanted = true;  // a constant, next
        for (++at_; More(); ++at_) {
            const Piece& piece = pieces_[at_];
            if (piece.Is(u'}')) {
                ++at_;
                return !wanted;
            }
            if (piece.kind == Piece::kBlank || IsOneOf(u"+-")) continue;
            if (IsOneOf(u",;")) {
                if (wanted) return false;
                wanted = true;
            } else if (piece.kind == Piece::kText || piece.kind == Piece::kWord ||
                       piece.kind == Piece::kError) {
                wanted = false;
            } else {
                return false;
            }
        }
        return false;
    }

    const std::vector<Piece> pieces_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace

bool IsWellFormed(std::u16string_view shown) { return Grammar(shown).Accepts(); }

}  // namespace korvane::calc
