// The three texts that the tree shows for an element.
#include "base/number.h"
#include "base/text.h"
#include "formula/element.h"
#include "formula/error_text.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane {
namespace {

std::u16string Numbered(const char16_t* label, std::int32_t number) {
    return label + NumberText(number);
}

// A condition's value as the branch logic reads it. An error value is no number
// and not empty, so it counts as true.
bool ReadCondition(const std::u16string& value) {
    if (const auto number = ParseNumber(value)) return *number != 0;
    return !value.empty();
}

std::u16string ConditionText(const std::u16string& value) {
    if (EqualIgnoringCase(value, u"True") || EqualIgnoringCase(value, u"False")) return value;
    return ReadCondition(value) ? u"True" : u"False";
}

bool BelongsToReference(char16_t ch) {
    return (ch >= u'A' && ch <= u'Z') || (ch >= u'a' && ch <= u'z') || (ch >= u'0' && ch <= u'9') ||
           ch == u'_' || ch == u':';
}

// The reference at the end of a text, without sheet and "$": the label of one
// that leads to no cells.
std::u16string LastReference(std::u16string_view formula) {
    std::u16string name;
    for (auto at = formula.size(); at > 0; --at) {
        const char16_t ch = formula[at - 1];
        if (ch == u'$') continue;
        if (!BelongsToReference(ch)) break;
        name += ch;
    }
    return {name.rbegin(), name.rend()};
}

bool IsHidden(const Value& hidden) {
    // No single answer means that some of the rows or columns are hidden.
    return hidden.IsNull() || (hidden.Boolean() && *hidden.Boolean());
}

}  // namespace

void CElement::FillDisplayTexts() {
    if (enType_ == kindOrdinary && sFunction_.empty()) {
        if (rngRange_) {
            FillReferenceTexts();
        } else {
            FillComputedTexts();
        }
        return;
    }
    sValue_ = sCalcValue_;
    switch (enType_) {
        case kindOrdinary: sName_ = sFunction_; break;
        case kindIfCondition:
            sName_ = u"condition";
            sValue_ = ConditionText(sCalcValue_);
            break;
        case kindIfTrue: sName_ = lTag_ == 1 ? u"if true (chosen)" : u"if true"; break;
        case kindIfFalse: sName_ = lTag_ == 1 ? u"if false (chosen)" : u"if false"; break;
        case kindChooseIndex:
            sName_ = u"index";
            sValue_ = NumberText(TextToWhole(sCalcValue_));  // fails for an error or a text
            break;
        case kindChosenValue: sName_ = Numbered(u"value", lTag_) + u" (chosen)"; break;
        case kindOtherValue: sName_ = Numbered(u"value", lTag_); break;
    }
    sLocation_ = sLocationText(rngRange_, true);
}

void CElement::FillComputedTexts() {
    sLocation_.clear();
    sValue_ = sCalcValue_;
    sName_ = bIsErrorText(sValue_) ? sValue_ : LastReference(sFormula_);
}

void CElement::FillReferenceTexts() {
    sName_ = rngRange_->Address(host::kRelative);
    sLocation_ = sLocationText(rngRange_, false);
    sValue_ = sCalcValue_;
    if (IsHidden(rngRange_->EntireRow()->Hidden()) ||
        IsHidden(rngRange_->EntireColumn()->Hidden())) {
        return;  // the text of a hidden cell is not what the user can see
    }
    const Value text = rngRange_->Text();
    if (text.IsNull()) return;
    sValue_ = TrimBlanks(sErrorText(text, clsOptions_->application()));
}

std::u16string CElement::sLocationText(const host::RangePtr& rng, bool bWithAddress) const {
    if (!rng) return {};
    const auto sheet = rng->Worksheet();
    std::u16string text;
    if (sheet->Parent()->Name() != clsOptions_->RootWorkbookName()) text = u"[...]";
    text += sheet->Name();
    if (bWithAddress) text += u"!" + rng->Address(host::kRelative);
    return text;
}

std::u16string CElement::sCellFormula(host::Range& rng) {
    Value formula = rng.Formula();
    if (const Array* block = formula.AsArray()) {
        const std::u16string* first = block->At(1, 1).Text();
        return first ? *first : std::u16string();
    }
    return formula.Text() ? std::move(*formula.Text()) : std::u16string();
}

}  // namespace korvane
