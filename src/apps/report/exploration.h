// One exploration of one cell, and what it found as plain data: what the
// command line prints, and what crosses from the office process to it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/application.h"
#include "host/range.h"

namespace korvane {

class CElement;

// One part of the formula; the members are those of CElement.
struct PartReport {
    std::u16string name;
    std::u16string function;
    std::u16string formula;
    std::int32_t kind = 0;
    std::int32_t tag = 0;
    std::int32_t position = 0;      // in the parent's text; 0: none of its own
    std::int32_t rootPosition = 0;  // in the whole formula
    std::int32_t length = 0;
    std::u16string value;
    std::u16string location;
    std::u16string calcValue;
    std::optional<std::u16string> range;  // external absolute address
    std::vector<PartReport> children;
};

struct ExplorationReport {
    bool ok = false;
    std::u16string cell;     // external absolute address
    std::u16string formula;  // as far as it was read
    bool bEveryFunction = true;
    bool bPreciseCalc = false;
    bool bMaybeImprecise = false;
    bool bContainsIndirect = false;
    std::vector<std::u16string> log;  // "module.procedure: description"
    std::optional<PartReport> tree;   // only when ok
};

// An element and everything below it. Raises when the host fails.
PartReport PartOf(const CElement& element);

// Explores `cell` (one cell) in the given modes. Never throws korvane::Error: a
// failure ends in `ok` false and a line of `log`. The host's calculation state
// is as before on every way out.
ExplorationReport Explore(host::Application& application, const host::RangePtr& cell,
                          bool bEveryFunction, bool bPreciseCalc);

}  // namespace korvane
