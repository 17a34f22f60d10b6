#include "apps/command/explore_all.h"

#include "base/text.h"
#include "base/value.h"

namespace korvane::command {
namespace {

// Behind "CElement.bInitRoot: ".
std::string DescriptionOf(const std::u16string& logLine) {
    const auto colon = logLine.find(u": ");
    return ToUtf8(colon == std::u16string::npos ? logLine : logLine.substr(colon + 2));
}

void AppendCounts(std::string& out, const char* label,
                  const std::map<std::string, std::int64_t>& counts) {
    if (counts.empty()) return;
    out += label;
    const char* gap = " ";
    for (const auto& [kind, count] : counts) {
        out.append(gap).append(kind).append(" (").append(std::to_string(count)).append(")");
        gap = ", ";
    }
    out += "\n";
}

}  // namespace

void AllSummary::Add(const ExplorationReport& report) {
    if (!report.ok) {
        ++failed;
        ++failures[report.log.empty() ? "unknown" : DescriptionOf(report.log.front())];
        return;
    }
    ++explored;
    if (report.bMaybeImprecise) ++imprecise;
    if (report.bContainsIndirect) ++indirect;
    if (report.tree && IsErrorName(report.tree->value)) ++errorValues[ToUtf8(report.tree->value)];
}

std::string AllSummary::Text() const {
    std::string out = "explored: " + std::to_string(explored) +
                      ", failed: " + std::to_string(failed) +
                      ", imprecise: " + std::to_string(imprecise) +
                      ", with indirect references: " + std::to_string(indirect) + "\n";
    AppendCounts(out, "error values:", errorValues);
    AppendCounts(out, "failures:", failures);
    if (hostsLost > 0) out += "hosts lost and started again: " + std::to_string(hostsLost) + "\n";
    return out;
}

AllSummary ExploreAll(const OpenDocument& open, bool bEveryFunction, bool bPreciseCalc,
                      const std::function<void(const ExplorationReport&)>& report,
                      const std::function<void(std::size_t, std::size_t)>& progress) {
    AllSummary summary;
    RestartingDocument document(open);
    const auto cells = document.FormulaCells();
    for (std::size_t done = 0; done < cells.size(); ++done) {
        progress(done, cells.size());
        const auto result = document.Explore(cells[done], bEveryFunction, bPreciseCalc);
        summary.Add(result);
        report(result);
    }
    summary.hostsLost = document.hostsLost();
    progress(cells.size(), cells.size());
    return summary;
}

}  // namespace korvane::command
