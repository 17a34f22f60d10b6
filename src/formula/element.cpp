// The element's life: root and children, positions, release.
#include "formula/element.h"

#include "base/attempt.h"
#include "base/text.h"
#include "formula/scan.h"
#include "host/name.h"
#include "host/worksheet.h"

namespace korvane {
namespace {

// How deep elements may nest below the root. Real formulas stay far below (the
// host allows 64 levels of calls); the limit keeps the recursion off the end of
// the stack, and every road that recurses counts against it.
constexpr std::int32_t kDeepestElement = 400;

}  // namespace

bool CElement::bInitRoot(CElementOptions& clsOptions) {
    return Guarded(clsOptions.reporter(), u"CElement", u"bInitRoot", [&] { InitRoot(clsOptions); });
}

void CElement::InitRoot(CElementOptions& clsOptions) {
    DeleteSubs();
    clsOptions.ForgetRoot();
    clsOptions_ = &clsOptions;
    rngRange_ = clsOptions.rngRootCell;
    lPos_ = 0;
    sFunction_.clear();
    enType_ = kindOrdinary;

    std::u16string_view prefix = u"=";
    if (rngRange_->HasArray()) {
        sFormula_ = u"{" + sCellFormula(*rngRange_) + u"}";
        prefix = u"{=";
        if (!rngRange_->Worksheet()->ProtectContents()) rngRange_ = rngRange_->CurrentArray();
    } else {
        sFormula_ = sCellFormula(*rngRange_);
    }
    if (StartsWith(sFormula_, prefix)) {
        clsOptions.ClearCalc();
        clsOptions.bMaybeImprecise = false;
        clsOptions.bContainsIndirect = false;
        const auto evaluations = clsOptions.application().BeginEvaluations();
        Parse();
        clsOptions.RestoreCalc();
    }
    try {
        if (const auto name = clsOptions.rngRootCell->Name())
            sFunction_ = sStripSheet(name->Name_());
    } catch (const Error&) {
        // Then the cell is shown by its address.
    }
    FillDisplayTexts();
    InitRootPositions();
}

CElement& CElement::AddSub(std::u16string_view sFormula, std::u16string_view sFunction,
                           std::int32_t lPos, ElementKind enType, std::int32_t lTag) {
    auto sub = std::make_shared<CElement>();
    sub->InitSub(this, *clsOptions_, sFormula, sFunction, lPos, enType, lTag);
    if (colSubs_.empty()) colSubs_.reserve(4);  // most elements have few
    colSubs_.push_back(std::move(sub));
    return *colSubs_.back();
}

void CElement::InitSub(CElement* clsParent, CElementOptions& clsOptions,
                       std::u16string_view sFormula, std::u16string_view sFunction,
                       std::int32_t lPos, ElementKind enType, std::int32_t lTag) {
    clsOptions_ = &clsOptions;
    enType_ = enType;
    clsParent_ = clsParent;
    lTag_ = lTag;
    sFunction_ = sFunction;
    lDepth_ = clsParent->lDepth_ + 1;
    if (lDepth_ > kDeepestElement) {
        throw Error(kErrorOutOfStack, u"The formula is nested too deeply");
    }
    clsOptions.CountElement();

    const bool isCall = !sFunction.empty();
    const std::u16string expression = WithEquals(sFormula);
    std::optional<Value> answer;
    sCalcValue_ = sEvaluateExpression(expression, isCall, answer);
    const host::NamePtr name = isCall ? nullptr : FindName(sFormula);
    rngRange_ = ResolveOperand(expression, name, answer);

    sFormula_ = sFormula;
    std::u16string nameText;
    bool nameExpanded = false;
    bool withinItself = false;
    if (name) {
        nameText = name->Name_();
        const std::u16string refersTo = name->RefersTo();
        nameExpanded = sRemoveChars(refersTo, u"$") != u"=" + sRemoveChars(sFormula, u"$");
        for (const auto& expanding : clsOptions.expandingNames) {
            if (EqualIgnoringCase(expanding, nameText)) withinItself = true;
        }
        if (nameExpanded) sFormula_ = refersTo;
    }

    const bool plain = enType == kindOrdinary && !isCall;
    // A token that spells its parent's whole text (#REF!/A1 is one) would be
    // parsed to itself for ever, as would a name within its own definition.
    const bool endless = withinItself || (plain && sFormula == clsParent->sFormula_);
    if (!endless && (!plain || bNeedsParse(sFormula_))) {
        if (nameExpanded) clsOptions.expandingNames.push_back(nameText);
        ParseFurther(nameExpanded);
        if (nameExpanded) clsOptions.expandingNames.pop_back();
    }
    if (name) sFunction_ = sStripSheet(nameText);
    sFormula_ = sFormula;
    lPos_ = lPos;
    FillDisplayTexts();
}

void CElement::ParseFurther(bool bNameExpanded) {
    if (EqualIgnoringCase(sFunction_, u"IF")) {
        ParseIf();
    } else if (EqualIgnoringCase(sFunction_, u"CHOOSE")) {
        ParseChoose();
    } else {
        Parse();
    }
    if (bNameExpanded) {
        DeletePosition();
    } else {
        CollapseSingleArgument();
    }
}

// SUM(B2:B9) is one element that refers to B2:B9, not a call with one child.
void CElement::CollapseSingleArgument() {
    if (colSubs_.size() != 1 || EqualIgnoringCase(sFunction_, u"INDIRECT")) return;
    std::u16string_view inner = sFormula_;
    if (!sFunction_.empty()) {
        const std::size_t brackets = sFunction_.size() + 2;
        if (inner.size() < brackets) return;  // the call's text ends at its "("
        inner = inner.substr(brackets - 1, inner.size() - brackets);
    }
    const CElement& only = *colSubs_.front();
    if (!only.colSubs_.empty() || only.sFormula_ != inner) return;
    rngRange_ = only.rngRange_;
    const bool removedAnyway = !clsOptions_->bEveryFunction && enType_ == kindOrdinary &&
                               !sFunction_.empty() && !rngRange_;
    if (removedAnyway) return;  // Scan takes the child over
    colSubs_.clear();
}

std::int32_t CElement::RootPositionBelow(std::int32_t lParentRootPosition) const {
    if (lParentRootPosition <= 0) return lPos_;
    return lPos_ < 1 ? lParentRootPosition : lPos_ + lParentRootPosition - 1;
}

std::int32_t CElement::lGetRootPosition() const {
    return RootPositionBelow(clsParent_ ? clsParent_->lGetRootPosition() : 0);
}

std::int32_t CElement::lGetLength() const {
    if (clsParent_ && lPos_ == 0) return clsParent_->lGetLength();
    return static_cast<std::int32_t>(sFormula_.size());
}

void CElement::InitRootPositions() {
    // The parent's are stored already, so that a deep tree costs no more than
    // its elements.
    lRootPosition_ = RootPositionBelow(clsParent_ ? clsParent_->lRootPosition_ : 0);
    lLength_ = clsParent_ && lPos_ == 0 ? clsParent_->lLength_
                                        : static_cast<std::int32_t>(sFormula_.size());
    for (const auto& sub : colSubs_) sub->InitRootPositions();
}

void CElement::DeletePosition() {
    lPos_ = 0;
    for (const auto& sub : colSubs_) sub->DeletePosition();
}

void CElement::DeleteSubs() {
    clsParent_ = nullptr;
    while (!colSubs_.empty()) {
        colSubs_.back()->DeleteSubs();
        colSubs_.pop_back();
    }
}

}  // namespace korvane
