// The cells that the user explored, to go back to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/error.h"
#include "host/application.h"

namespace korvane {

// Holds the host's own ranges, not their addresses: a range moves with its
// cells, and every access to one whose workbook was closed fails. At most 100,
// oldest first; one more drops the oldest.
class CHistory {
public:
    // Both must outlive the history; `reporter` is told of a bGoBack that fails.
    CHistory(host::Application& application, ErrorReporter& reporter)
        : application_(application), reporter_(reporter) {}
    CHistory(const CHistory&) = delete;
    CHistory& operator=(const CHistory&) = delete;

    // Records explored cells. Null, and cells that were recorded last, change
    // nothing.
    void AddRange(const host::RangePtr& rng);

    // Takes the user to the cells explored last, or, where he still is at the
    // ones that this reached before, to those explored before them. Cells that
    // cannot be reached any more are passed over, and stay recorded. True also
    // when there is nowhere to go; false when anything but the host failed, which
    // is reported.
    bool bGoBack();

    // The place (from 1) of the entry that bGoBack tried last; 0 when an entry
    // was added since, or nothing was tried yet.
    std::int32_t lPosition() const { return lPosition_; }
    std::size_t count() const { return colRanges_.size(); }

private:
    bool bIsLast(host::Range& rng) const;
    bool bIsAtPosition() const;
    host::RangePtr rngAt(std::int32_t lIndex) const;

    host::Application& application_;
    ErrorReporter& reporter_;
    std::vector<host::RangePtr> colRanges_;
    std::int32_t lPosition_ = 0;
};

}  // namespace korvane
