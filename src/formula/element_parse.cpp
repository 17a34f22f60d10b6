// The scan: one run over a text, left to right, that finds an element's
// children. It is no grammar; it collects tokens between operators.
#include <array>

#include "base/text.h"
#include "formula/element.h"
#include "formula/scan.h"

namespace korvane {
namespace {

enum class CharClass : std::uint8_t { kOrdinary, kOperator, kFiller, kQuote, kColon };

constexpr CharClass ClassOf(char16_t ch) {
    if (bIsOperator(ch)) return CharClass::kOperator;
    if (bIsFiller(ch)) return CharClass::kFiller;
    if (bIsQuote(ch)) return CharClass::kQuote;
    return ch == u':' ? CharClass::kColon : CharClass::kOrdinary;
}

constexpr auto kClasses = [] {
    std::array<CharClass, 128> classes{};
    for (std::size_t ch = 0; ch < classes.size(); ++ch) {
        classes[ch] = ClassOf(static_cast<char16_t>(ch));
    }
    return classes;
}();

// ClassOf by table: the scan asks it of every character.
CharClass ClassAt(std::u16string_view text, std::size_t at) {
    const char16_t ch = text[at];
    return ch < kClasses.size() ? kClasses[ch] : CharClass::kOrdinary;
}

// The characters collected so far. They are a slice of the text, which costs
// nothing, until a filler within the token ("A1 B1") makes a copy needed.
class Token {
public:
    bool empty() const { return view_.empty(); }
    std::u16string_view view() const { return view_; }
    void Append(std::u16string_view slice) {
        if (view_.empty()) {
            view_ = slice;
            copied_ = false;
            return;
        }
        if (!copied_) {
            if (view_.data() + view_.size() == slice.data()) {
                view_ = {view_.data(), view_.size() + slice.size()};
                return;
            }
            copy_ = view_;
            copied_ = true;
        }
        copy_ += slice;
        view_ = copy_;
    }
    // Only at the end of a token: nothing is appended behind a cut one.
    void RemovePrefix(std::size_t count) { view_.remove_prefix(count); }
    void Clear() { view_ = {}; }

private:
    std::u16string_view view_;
    std::u16string copy_;
    bool copied_ = false;
};

}  // namespace

class CElement::Scan {
public:
    explicit Scan(CElement& element)
        : element_(element),
          text_(element.sFormula_),
          length_(static_cast<std::int32_t>(text_.size())) {}

    void Run() {
        // A call's own name is no token of its arguments: its scan begins at "(".
        i_ = tokenStart_ = static_cast<std::int32_t>(element_.sFunction_.size()) + 1;
        element_.lastToken_ = {};
        preciseBefore_ = element_.clsOptions_->preciseEvaluations;
        while (i_ <= length_) Step();
    }

private:
    char16_t At(std::int32_t lPos) const { return text_[static_cast<std::size_t>(lPos) - 1]; }
    std::u16string_view Slice(std::int32_t from, std::int32_t to) const {  // both included
        return text_.substr(static_cast<std::size_t>(from) - 1,
                            static_cast<std::size_t>(to) - static_cast<std::size_t>(from) + 1);
    }

    void Step() {
        if (token_.empty()) tokenStart_ = i_;
        switch (ClassAt(text_, static_cast<std::size_t>(i_) - 1)) {
            case CharClass::kFiller:
                if (At(i_) == u'(' && !token_.empty()) {
                    ReadCall();
                    return;
                }
                ++i_;
                break;
            case CharClass::kOperator:
                if (!token_.empty()) ReadOperator();
                ++i_;
                break;
            case CharClass::kQuote: {
                const std::int32_t closing = lPastQuote(i_, text_);
                token_.Append(Slice(i_, closing));
                i_ = closing + 1;
                break;
            }
            case CharClass::kColon:
                if (!token_.empty()) token_.Append(Slice(i_, i_));  // a leading one is dropped
                ++i_;
                break;
            case CharClass::kOrdinary: ReadOrdinary(); break;
        }
        if (i_ > length_ && !token_.empty()) {
            const CElementOptions& options = *element_.clsOptions_;
            LastToken last{tokenStart_, element_.colSubs_.size(), {}};
            if (options.preciseEvaluations > preciseBefore_) {
                last.bMaybeImprecise = options.bMaybeImprecise;
            }
            EndToken();
            element_.lastToken_ = last;
        }
    }

    void ReadOrdinary() {
        auto end = static_cast<std::size_t>(i_);
        while (end < text_.size() && ClassAt(text_, end) == CharClass::kOrdinary) ++end;
        token_.Append(Slice(i_, static_cast<std::int32_t>(end)));
        i_ = static_cast<std::int32_t>(end) + 1;
    }

    // An operator behind a token.
    void ReadOperator() {
        if (token_.view().front() == u'#' && At(i_) == u'/') {
            token_.Append(Slice(i_, i_));  // "#DIV/0!" and "#N/A" stay whole
        } else {
            EndToken();
        }
    }

    // A "(" behind a token, which is a function's name.
    void ReadCall() {
        if (element_.clsOptions_->bEveryFunction || bIsReferenceFunction(token_.view())) {
            OpenCall();
        } else {
            token_.Clear();  // seen through: its arguments belong to this level
            ++i_;
        }
    }

    void AddPart(std::u16string_view part, std::int32_t start) {
        if (!bIsConstant(part)) element_.AddSub(part, u"", start, kindOrdinary, 0);
    }

    void EndToken() {
        AddPart(token_.view(), tokenStart_);
        token_.Clear();
    }

    // The call becomes a part of its own.
    void OpenCall() {
        if (const auto colon = token_.view().rfind(u':'); colon != std::u16string_view::npos) {
            // A1:INDEX(…): both ends of the range are parts of their own.
            AddPart(token_.view().substr(0, colon), tokenStart_);
            token_.RemovePrefix(colon + 1);
            tokenStart_ += static_cast<std::int32_t>(colon) + 1;
        }
        const std::int32_t closing = lClosingBracket(i_, text_);
        const std::u16string_view call = Slice(tokenStart_, closing);
        if (!bIsConstant(call)) {
            const CElement& added =
                element_.AddSub(call, token_.view(), tokenStart_, kindOrdinary, 0);
            if (!element_.clsOptions_->bEveryFunction && !added.rngRange_) {
                ReplaceCallByItsArguments(closing);
                return;
            }
        }
        i_ = closing + 1;
        token_.Clear();
    }

    // The call just added did not lead to cells: it goes, and its arguments are
    // scanned at this level as if it were not there. They have just been built
    // below the call, from the same characters; building them again would cost
    // 2^depth for calls within calls. So they are taken over instead.
    void ReplaceCallByItsArguments(std::int32_t closing) {
        const CElementPtr call = std::move(element_.colSubs_.back());
        element_.colSubs_.pop_back();
        const std::int32_t start = tokenStart_;
        const bool scannedFromBracket =
            call->sFunction_ == token_.view() &&
            PastFillers(start + static_cast<std::int32_t>(token_.view().size())) == i_;
        token_.Clear();
        if (!scannedFromBracket) {
            ++i_;  // odd spacing: the call's own scan began elsewhere
            return;
        }
        std::size_t take = call->colSubs_.size();
        i_ = closing + 1;
        LastToken last = call->lastToken_;
        if (last.lStart != 0) {
            // ")" ends no token: what follows belongs to the call's last one.
            const std::int32_t tokenStart = start + last.lStart - 1;
            const std::int32_t next = PastFillers(closing + 1);
            if (next > length_) {
                // Nothing follows here, but perhaps behind the brackets around.
                last.lStart = tokenStart;
                last.lSubsBefore += element_.colSubs_.size();
                element_.lastToken_ = last;
            } else if (!bIsOperator(At(next)) || (At(tokenStart) == u'#' && At(next) == u'/')) {
                // It is to be collected again, longer, as if it had not been.
                take = last.lSubsBefore;
                i_ = tokenStart;
                if (last.bMaybeImprecise) {
                    element_.clsOptions_->bMaybeImprecise = *last.bMaybeImprecise;
                }
            }
        }
        for (std::size_t k = 0; k < take; ++k) {
            CElementPtr& sub = call->colSubs_[k];
            sub->clsParent_ = &element_;
            sub->lPos_ += start - 1;
            element_.colSubs_.push_back(std::move(sub));
        }
        call->colSubs_.erase(call->colSubs_.begin(),
                             call->colSubs_.begin() + static_cast<std::ptrdiff_t>(take));
    }

    // The first position from `lPos` on that a token already begun does not pass
    // over; behind the text when there is none.
    std::int32_t PastFillers(std::int32_t lPos) const {
        while (lPos <= length_ && At(lPos) != u'(' && bIsFiller(At(lPos))) ++lPos;
        return lPos;
    }

    CElement& element_;
    const std::u16string_view text_;
    const std::int32_t length_;
    std::int32_t i_ = 1;
    std::int32_t tokenStart_ = 1;
    Token token_;
    std::int64_t preciseBefore_ = 0;
};

void CElement::Parse() { Scan(*this).Run(); }

}  // namespace korvane
