// The scan: one run over a text, left to right, that finds an element's
// children. It is no grammar; it collects tokens between operators.
#include "base/text.h"
#include "formula/element.h"
#include "formula/scan.h"

namespace korvane {

class CElement::Scan {
public:
    explicit Scan(CElement& element)
        : element_(element), text_(element.sFormula_), length_(static_cast<std::int32_t>(text_.size())) {}

    void Run() {
        // A call's own name and a call within: the scan of a call begins at its "(".
        i_ = tokenStart_ = static_cast<std::int32_t>(element_.sFunction_.size()) + 1;
        element_.lLastToken_ = 0;
        while (i_ <= length_) Step();
    }

private:
    char16_t At(std::int32_t lPos) const { return text_[static_cast<std::size_t>(lPos) - 1]; }
    std::u16string_view Slice(std::int32_t from, std::int32_t to) const {  // both included
        return text_.substr(static_cast<std::size_t>(from) - 1, static_cast<std::size_t>(to - from + 1));
    }

    void Step() {
        if (token_.empty()) tokenStart_ = i_;
        const char16_t ch = At(i_);
        if (ch == u'(' && !token_.empty()) {
            if (element_.clsOptions_->bEveryFunction || bIsReferenceFunction(token_)) {
                OpenCall();
            } else {
                token_.clear();  // seen through: its arguments belong to this level
                ++i_;
            }
            return;
        }
        if (bIsOperator(ch) && !token_.empty()) {
            if (token_.front() == u'#' && ch == u'/') {
                token_ += ch;  // "#DIV/0!" and "#N/A" stay whole
            } else {
                EndToken();
            }
            ++i_;
        } else if (bIsQuote(ch)) {
            const std::int32_t closing = lPastQuote(i_, text_);
            token_ += Slice(i_, closing);
            i_ = closing + 1;
        } else {
            const bool leadingColon = ch == u':' && token_.empty();
            if (!bIsOperator(ch) && !bIsFiller(ch) && !leadingColon) token_ += ch;
            ++i_;
        }
        if (i_ > length_ && !token_.empty()) {
            element_.lSubsBeforeLastToken_ = element_.colSubs_.size();
            const std::int32_t start = tokenStart_;
            EndToken();
            element_.lLastToken_ = start;
        }
    }

    void AddPart(std::u16string_view part, std::int32_t start) {
        if (!bIsConstant(part)) element_.AddSub(part, u"", start, kindOrdinary, 0);
    }

    void EndToken() {
        AddPart(token_, tokenStart_);
        token_.clear();
    }

    // The token is a function's name and stands before a "(".
    void OpenCall() {
        if (const auto colon = token_.rfind(u':'); colon != std::u16string::npos) {
            // A1:INDEX(…): both ends of the range are parts of their own.
            AddPart(std::u16string_view(token_).substr(0, colon), tokenStart_);
            token_.erase(0, colon + 1);
            tokenStart_ += static_cast<std::int32_t>(colon) + 1;
        }
        const std::int32_t closing = lClosingBracket(i_, text_);
        const std::u16string_view call = Slice(tokenStart_, closing);
        if (!bIsConstant(call)) {
            const CElement& added = element_.AddSub(call, token_, tokenStart_, kindOrdinary, 0);
            if (!element_.clsOptions_->bEveryFunction && !added.rngRange_) {
                ReplaceCallByItsArguments(closing);
                return;
            }
        }
        i_ = closing + 1;
        token_.clear();
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
            !token_.empty() && start + static_cast<std::int32_t>(token_.size()) == i_;
        token_.clear();
        if (!scannedFromBracket) {
            ++i_;  // odd spacing: the call's own scan began elsewhere
            return;
        }
        std::size_t take = call->colSubs_.size();
        i_ = closing + 1;
        if (call->lLastToken_ != 0 && TokenGoesOnBehind(closing, At(start + call->lLastToken_ - 1))) {
            // ")" ends no token: what follows belongs to the last one, which is
            // to be collected again, longer.
            take = call->lSubsBeforeLastToken_;
            i_ = start + call->lLastToken_ - 1;
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

    // Whether a token with this first character, not yet ended at `closing`,
    // takes in characters behind it.
    bool TokenGoesOnBehind(std::int32_t closing, char16_t first) const {
        for (std::int32_t p = closing + 1; p <= length_; ++p) {
            const char16_t ch = At(p);
            if (ch == u'(' || !bIsFiller(ch)) {
                return !bIsOperator(ch) || (first == u'#' && ch == u'/');
            }
        }
        return false;
    }

    CElement& element_;
    const std::u16string_view text_;
    const std::int32_t length_;
    std::int32_t i_ = 1;
    std::int32_t tokenStart_ = 1;
    std::u16string token_;
};

void CElement::Parse() { Scan(*this).Run(); }

}  // namespace korvane
