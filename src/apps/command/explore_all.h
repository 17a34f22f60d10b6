// Explores every formula of a document, whatever happens to its host.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "apps/command/restarting_document.h"

namespace korvane::command {

// What came out of all explorations.
struct AllSummary {
    std::int64_t explored = 0;
    std::int64_t failed = 0;
    std::int64_t imprecise = 0;
    std::int64_t indirect = 0;
    std::map<std::string, std::int64_t> errorValues;  // by name, such as "#N/A"
    std::map<std::string, std::int64_t> failures;     // by description
    std::int64_t hostsLost = 0;                       // and replaced by a new one

    // Counts one exploration.
    void Add(const ExplorationReport& report);
    // As text, several lines.
    std::string Text() const;
};

// Explores all formula cells in order and hands each report to `report`. A cell
// on which the host is lost twice, or takes too long, is reported as failed; the
// host is started again and the rest goes on. `progress` is told the cells done
// and all of them. Throws CommandError when the document cannot be opened, the
// first time or again.
AllSummary ExploreAll(const OpenDocument& open, bool bEveryFunction, bool bPreciseCalc,
                      const std::function<void(const ExplorationReport&)>& report,
                      const std::function<void(std::size_t, std::size_t)>& progress);

}  // namespace korvane::command
