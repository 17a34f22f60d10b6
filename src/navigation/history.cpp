#include "navigation/history.h"

#include "base/attempt.h"
#include "host/range.h"
#include "navigation/go_to.h"

namespace korvane {
namespace {

constexpr std::size_t kMostRanges = 100;

std::u16string sExternal(host::Range& rng) { return rng.Address(host::kExternal); }

}  // namespace

void CHistory::AddRange(const host::RangePtr& rng) {
    if (!rng || bIsLast(*rng)) return;
    colRanges_.push_back(rng);
    if (colRanges_.size() > kMostRanges) colRanges_.erase(colRanges_.begin());
    lPosition_ = 0;
}

// Cells that cannot be read are no others' repeat.
bool CHistory::bIsLast(host::Range& rng) const {
    if (colRanges_.empty()) return false;
    bool bSame = false;
    Succeeds([&] { bSame = sExternal(rng) == sExternal(*colRanges_.back()); });
    return bSame;
}

bool CHistory::bGoBack() {
    // The reports have always named this module so.
    return Guarded(reporter_, u"CStack", u"bGoBack", [&] {
        auto i = static_cast<std::int32_t>(colRanges_.size());
        if (lPosition_ > 0 && bIsAtPosition()) i = lPosition_ - 1;
        for (; i >= 1; --i) {
            const bool bReached = bGoTo(*rngAt(i));
            lPosition_ = i;
            if (bReached) break;
        }
    });
}

// Whether the user still stands where the last bGoBack put him.
bool CHistory::bIsAtPosition() const {
    bool bSame = false;
    Succeeds([&] {
        const std::u16string sEntry = sExternal(*rngAt(lPosition_));
        bSame = sEntry == sExternal(*application_.ActiveCell());
    });
    return bSame;
}

host::RangePtr CHistory::rngAt(std::int32_t lIndex) const {
    return colRanges_.at(static_cast<std::size_t>(lIndex) - 1);
}

}  // namespace korvane
