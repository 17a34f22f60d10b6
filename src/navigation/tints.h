// The tints of all open explorers, in the order in which they were put on.
#pragma once

#include <vector>

namespace korvane {

class CSelector;

// Two explorers can show the same cells. Each keeps the fill that it found, and
// what the second finds is the first one's tint: so a tint that is taken off has
// those above it taken off first and put on again afterwards, and the last one
// to go gives the user's own fill back, whatever the order.
class CTints {
public:
    CTints() = default;
    CTints(const CTints&) = delete;
    CTints& operator=(const CTints&) = delete;

    // `selector` has put a tint on; it is the topmost now.
    void Add(CSelector& selector) { selectors_.push_back(&selector); }
    // It has none any more.
    void Remove(CSelector& selector) { std::erase(selectors_, &selector); }
    // Those that put theirs on later, the oldest first.
    std::vector<CSelector*> Above(const CSelector& selector) const {
        for (auto it = selectors_.begin(); it != selectors_.end(); ++it) {
            if (*it == &selector) return {it + 1, selectors_.end()};
        }
        return {};
    }

private:
    std::vector<CSelector*> selectors_;  // those that have tinted cells
};

}  // namespace korvane
