// Whether a text is a formula, in Excel's eyes. Calc's own reader mends what is
// broken (=SUM(1,2 becomes =SUM(1,2)), so that it cannot be asked.
#include <cstddef>

#include "base/a1.h"
#include "base/text.h"
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
        bool inRange = false;
        std::u16string rangeSheet;  // that the range's corners have named so far
        for (;;) {
            if (!Operand()) return false;
            if (!inRange) rangeSheet.clear();
            if (!sheet_.empty()) {
                // Cells of two sheets make no range.
                if (!rangeSheet.empty() && !EqualIgnoringCase(rangeSheet, sheet_)) return false;
                rangeSheet = sheet_;
            }
            const std::size_t end = at_;
            SkipBlanks();
            inRange = Is(u':');
            if (Is(u'<') || Is(u'>')) {
                const bool less = Is(u'<');
                ++at_;
                if (Is(u'=') || (less && Is(u'>'))) ++at_;
            } else if (IsOneOf(u"+-*/^&=:")) {
                ++at_;
            } else if (!More() || IsOneOf(u",)")) {
                return true;
            } else if (at_ == end) {
                return false;
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
        sheet_.clear();
        if (Is(u'(')) return Bracketed(false);
        if (Is(u'{')) return Constants();
        if (pieces_[at_].kind == Piece::kText) {
            ++at_;
            return true;
        }
        if (!Prefix()) return false;
        const std::size_t start = at_;
        // A reference that has lost a part goes on behind the error's name.
        while (IsA(Piece::kError)) ++at_;
        if (IsA(Piece::kWord)) ++at_;
        if (IsA(Piece::kBracket)) ++at_;
        if (IsA(Piece::kError)) ++at_;
        if (at_ == start && !(IsA(Piece::kQuoted) && QuotedFirstSheet())) return false;
        // Two pieces that no operator joins, and a second sheet's mark.
        if (IsA(Piece::kQuoted) || IsA(Piece::kWord) || Is(u'!')) return false;
        return Is(u'(') ? Bracketed(true) : true;
    }

    bool IsA(Piece::Kind kind) const { return More() && pieces_[at_].kind == kind; }

    // A sheet or a book in front of cells or a name, up to its "!". False when the
    // mark is where nothing can be marked.
    bool Prefix() {
        std::size_t end = at_;
        const auto isAt = [&](Piece::Kind kind) {
            return end < pieces_.size() && pieces_[end].kind == kind;
        };
        if (isAt(Piece::kBracket)) ++end;
        const std::size_t name = end;
        while (isAt(Piece::kError)) ++end;  // a sheet that is lost
        if (isAt(Piece::kWord) || isAt(Piece::kQuoted)) ++end;
        if (end >= pieces_.size() || !pieces_[end].Is(u'!')) return true;
        if (end == at_) return false;
        const auto parts = end == name + 1
                               ? SplitReference(std::u16string(pieces_[name].text) + u"!A1")
                               : std::nullopt;
        if (parts) sheet_ = parts->sheet;
        at_ = end + 1;
        return true;
    }

    // The first of several sheets: 'Sheet 1':'Sheet 4'!C1.
    bool QuotedFirstSheet() {
        ++at_;
        return Is(u':');
    }

    bool Bracketed(bool isCall) {
        if (++depth_ > kDeepest) return false;
        ++at_;
        if (!Expressions(isCall) || !Is(u')')) return false;
        ++at_;
        --depth_;
        sheet_.clear();  // what is within has named its own
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
    std::u16string sheet_;  // that the operand read last begins with
};

}  // namespace

bool IsWellFormed(std::u16string_view shown) { return Grammar(shown).Accepts(); }

}  // namespace korvane::calc
