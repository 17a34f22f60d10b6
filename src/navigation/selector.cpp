#include "navigation/selector.h"

#include <vector>

#include "base/attempt.h"
#include "host/constants.h"
#include "navigation/go_to.h"

namespace korvane {
namespace {

constexpr int kHighlight = 33;  // an entry of the workbook's palette

// A fill's colour as a number. Cells that differ have none, which is no failure.
double ColorNumber(const Value& color) {
    if (color.IsNull()) return 0;
    if (const double* number = color.Number()) return *number;
    throw Error(kErrorTypeMismatch, u"Type mismatch");
}

bool IsNoColour(const Value& colorIndex) {
    const double* index = colorIndex.Number();
    return index && (*index == host::xlColorIndexNone || *index == host::xlColorIndexAutomatic);
}

}  // namespace

void CSelector::SelectRange(host::RangePtr rngTarget, bool bUseColour) {
    Deselect();
    if (!rngTarget) return;
    Suppressed([&] { bGoTo(*rngTarget); });
    if (!bUseColour || !bHighlight_) return;
    Colour(rngTarget);
    if (rngColoured_) tints_.Add(*this);
}

void CSelector::Colour(const host::RangePtr& rngTarget) {
    rngColoured_ = nullptr;
    if (!bSaveFill(*rngTarget)) return;
    const bool bTinted = vSavedColorIndex_.IsNull() || Suppressed([&] {
                             rngTarget->Interior()->SetColorIndex(Value(kHighlight));
                         });
    if (bTinted) rngColoured_ = rngTarget;
}

bool CSelector::bSaveFill(host::Range& rng) {
    const bool bIndex = Suppressed([&] { vSavedColorIndex_ = rng.Interior()->ColorIndex(); });
    const bool bColor = Suppressed([&] { dSavedColor_ = ColorNumber(rng.Interior()->Color()); });
    return bIndex && bColor;
}

void CSelector::Deselect() {
    if (!rngColoured_ || !bHighlight_) return;
    const std::vector<CSelector*> above = tints_.Above(*this);
    for (auto later = above.rbegin(); later != above.rend(); ++later) (*later)->TakeOff();
    TakeOff();
    rngColoured_ = nullptr;
    tints_.Remove(*this);
    for (CSelector* later : above) {
        later->Colour(host::RangePtr(later->rngColoured_));
        if (!later->rngColoured_) tints_.Remove(*later);
    }
}

void CSelector::TakeOff() {
    if (!vSavedColorIndex_.IsNull()) Suppressed([&] { RestoreFill(*rngColoured_); });
}

void CSelector::RestoreFill(host::Range& rng) const {
    const auto interior = rng.Interior();
    // Hosts without a ribbon know the palette alone; with one a colour may lie
    // outside it.
    if (IsNoColour(vSavedColorIndex_) || !hostHasRibbon_) {
        interior->SetColorIndex(vSavedColorIndex_);
    } else {
        interior->SetColor(dSavedColor_);
    }
}

}  // namespace korvane
