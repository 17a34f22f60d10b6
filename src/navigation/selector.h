// Showing the cells of a formula's part in the workbook.
#pragma once

#include "base/value.h"
#include "host/range.h"
#include "navigation/tints.h"
#include "settings/global_options.h"

namespace korvane {

// Takes the user to cells and tints them for as long as they are shown. What the
// host refuses is passed over: no failure leaves any member.
class CSelector {
public:
    // Whether cells are tinted at all is taken from the options now; a later
    // change of the option counts for the next selector. Selectors that may tint
    // the same cells share `tints`, which outlives them.
    CSelector(const CGlobalOptions& options, bool hostHasRibbon, CTints& tints)
        : bHighlight_(options.bHighlightCells()), hostHasRibbon_(hostHasRibbon), tints_(tints) {}
    CSelector(const CSelector&) = delete;
    CSelector& operator=(const CSelector&) = delete;
    // Lets go of tinted cells as they are; Deselect first to restore them.
    ~CSelector() { tints_.Remove(*this); }

    // Restores what is tinted, selects `rngTarget` on its sheet, and tints it
    // when `bUseColour` and the option say so. Null only restores. Cells with
    // different fills are selected and keep them.
    void SelectRange(host::RangePtr rngTarget, bool bUseColour = false);

    // Gives the tinted cells their fill back. The selection stays.
    void Deselect();

    // The cells that Deselect looks after; null for none.
    const host::RangePtr& rngColoured() const { return rngColoured_; }

private:
    void Colour(const host::RangePtr& rngTarget);
    void TakeOff();
    bool bSaveFill(host::Range& rng);
    void RestoreFill(host::Range& rng) const;

    bool bHighlight_;
    bool hostHasRibbon_;
    CTints& tints_;
    host::RangePtr rngColoured_;
    // The fill that rngColoured_ had.
    Value vSavedColorIndex_;
    double dSavedColor_ = 0;
};

}  // namespace korvane
