// One part of an explored formula, with its own parts: the tree that the
// explorer shows.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formula/element_options.h"

namespace korvane {

class CElement;
using CElementPtr = std::shared_ptr<CElement>;

// What an element stands for. The numbers are part of the system's reports.
enum ElementKind : std::int32_t {
    kindOrdinary = 0,  // root, reference, name, function call, expression
    kindIfCondition = 1,
    kindIfTrue = 2,
    kindIfFalse = 3,
    kindChooseIndex = 4,
    kindChosenValue = 5,
    kindOtherValue = 6,
};

// The root stands for the explored cell itself; every other element for a slice
// of its parent's text: a reference, a defined name, a function call, or a
// branch of IF or CHOOSE. An element owns its children; each child points back
// at its parent until DeleteSubs.
//
// Everything that can fail raises korvane::Error; bInitRoot alone catches it.
class CElement {
public:
    CElement() = default;
    CElement(const CElement&) = delete;
    CElement& operator=(const CElement&) = delete;
    ~CElement() { DeleteSubs(); }

    // Makes this element the root for the cell in `clsOptions.rngRootCell` and
    // builds its tree; an earlier tree is dropped. `clsOptions` must outlive the
    // tree. False when a failure ended the exploration: it was reported, the
    // tree is left as far as it got, and the caller owes a RestoreCalc.
    bool bInitRoot(CElementOptions& clsOptions);

    // Makes this element a child of `clsParent`: evaluates it, finds its cells
    // and parses it further. `sFormula` is its slice of the parent's text and
    // `lPos` where that begins; `sFunction` names a function call, else empty;
    // `lTag` is 1 for the chosen branch of an IF, the number of a CHOOSE value,
    // else 0.
    void InitSub(CElement* clsParent, CElementOptions& clsOptions, std::u16string_view sFormula,
                 std::u16string_view sFunction, std::int32_t lPos, ElementKind enType,
                 std::int32_t lTag);

    // Append the children: of any text, of an IF call, of a CHOOSE call.
    void Parse();
    void ParseIf();
    void ParseChoose();

    // Where this element begins in the root's text, and how long it is there;
    // worked out from the parents. The root begins at 0. What comes from a
    // name's definition has the name's own place.
    std::int32_t lGetRootPosition() const;
    std::int32_t lGetLength() const;
    // Stores both, here and in all children.
    void InitRootPositions();
    // Takes the own position of this element and all below it away.
    void DeletePosition();

    bool bIsRoot() const { return clsParent_ == nullptr; }

    // Lets go of the parent and of all children, the last one first.
    void DeleteSubs();

    ElementKind enGetType() const { return enType_; }
    std::int32_t lTag() const { return lTag_; }
    std::int32_t lPos() const { return lPos_; }  // in the parent's text; 0: none of its own
    const std::u16string& sFormula() const { return sFormula_; }
    const std::u16string& sFunction() const { return sFunction_; }  // function or defined name
    const std::u16string& sCalcValue() const { return sCalcValue_; }
    // The tree's three columns.
    const std::u16string& sName() const { return sName_; }
    void set_sName(std::u16string text) { sName_ = std::move(text); }
    const std::u16string& sLocation() const { return sLocation_; }
    const std::u16string& sValue() const { return sValue_; }
    // The cells that the element refers to; null for none.
    const host::RangePtr& rngRange() const { return rngRange_; }
    const std::vector<CElementPtr>& colSubs() const { return colSubs_; }
    const CElement* clsParent() const { return clsParent_; }
    // As InitRootPositions stored them.
    std::int32_t lRootPosition() const { return lRootPosition_; }
    std::int32_t lLength() const { return lLength_; }

    // The key of the element's node in the explorer's tree; set by the window.
    std::u16string sKey;

private:
    class Scan;  // one run of Parse

    // element.cpp
    void InitRoot(CElementOptions& clsOptions);
    CElement& AddSub(std::u16string_view sFormula, std::u16string_view sFunction, std::int32_t lPos,
                     ElementKind enType, std::int32_t lTag);
    void ParseFurther(bool bNameExpanded);
    void CollapseSingleArgument();
    std::int32_t RootPositionBelow(std::int32_t lParentRootPosition) const;

    // element_display.cpp
    void FillDisplayTexts();
    void FillReferenceTexts();
    void FillComputedTexts();
    std::u16string sLocationText(const host::RangePtr& rng, bool bWithAddress) const;
    static std::u16string sCellFormula(host::Range& rng);

    // element_evaluate.cpp
    std::u16string sEvaluate(std::u16string_view sText, bool bIsFunction) const;
    // The same of a text that has its "=". `answer` is what the host answered when
    // it was asked to evaluate it, and stays empty when a precise step succeeded.
    std::u16string sEvaluateExpression(const std::u16string& sText, bool bIsFunction,
                                       std::optional<Value>& answer) const;
    bool bEvaluatePrecisely(const std::u16string& sText, std::u16string& sValue) const;
    host::NamePtr FindName(std::u16string_view sText) const;
    host::RangePtr ResolveOperand(const std::u16string& sExpression, const host::NamePtr& oName,
                                  const std::optional<Value>& answer) const;
    host::RangePtr ResolveRange(const std::u16string& sText, int depth) const;
    host::RangePtr ResolveIndirect(std::u16string_view sText) const;
    host::RangePtr ResolveOffset(std::u16string_view sText, int depth) const;
    host::RangePtr EvaluateToRange(const std::u16string& sText) const;

    host::RangePtr rngRange_;
    std::u16string sFormula_;
    std::u16string sFunction_;
    std::u16string sCalcValue_;
    CElement* clsParent_ = nullptr;
    CElementOptions* clsOptions_ = nullptr;
    std::int32_t lPos_ = 0;
    std::vector<CElementPtr> colSubs_;
    ElementKind enType_ = kindOrdinary;
    std::int32_t lTag_ = 0;
    std::int32_t lLength_ = 0;
    std::int32_t lRootPosition_ = 0;
    std::u16string sName_;
    std::u16string sLocation_;
    std::u16string sValue_;

    std::int32_t lDepth_ = 0;  // the root's is 0
    // What Scan must know of a call's last token to take the call's children over.
    struct LastToken {
        std::int32_t lStart = 0;      // 0: nothing behind the text could belong to it
        std::size_t lSubsBefore = 0;  // children before it
        // What the last precise evaluation before it said of bMaybeImprecise, if
        // the scan made any.
        std::optional<bool> bMaybeImprecise;
    };
    LastToken lastToken_;
};

}  // namespace korvane
