#include "apps/command/restarting_document.h"

#include <utility>

#include "base/text.h"

namespace korvane::command {
namespace {

ExplorationReport LostOn(const std::u16string& cell, bool bEveryFunction, bool bPreciseCalc,
                         const CommandError& error) {
    ExplorationReport report;
    report.cell = cell;
    report.bEveryFunction = bEveryFunction;
    report.bPreciseCalc = bPreciseCalc;
    report.log.push_back(u"Korvane.Explore: " + ToUtf16(error.what()));
    return report;
}

}  // namespace

RestartingDocument::RestartingDocument(OpenDocument open)
    : open_(std::move(open)), document_(open_()) {}

Document& RestartingDocument::Running() {
    if (!document_) document_ = open_();
    return *document_;
}

void RestartingDocument::NoteLoss(const CommandError& error) {
    if (error.code() != kHostLost || !document_) throw;
    ++hostsLost_;
    // A signal that ended this host ends us here.
    document_.reset();
}

ExplorationReport RestartingDocument::Explore(const std::u16string& cell, bool bEveryFunction,
                                              bool bPreciseCalc) {
    const auto explore = [&] { return Running().Explore(cell, bEveryFunction, bPreciseCalc); };
    try {
        return explore();
    } catch (const TimeIsUp& error) {
        NoteLoss(error);
        return LostOn(cell, bEveryFunction, bPreciseCalc, error);
    } catch (const CommandError& error) {
        NoteLoss(error);
    }
    try {
        return explore();
    } catch (const CommandError& error) {
        NoteLoss(error);
        return LostOn(cell, bEveryFunction, bPreciseCalc, error);
    }
}

std::vector<std::u16string> RestartingDocument::FormulaCells() {
    try {
        return Running().FormulaCells();
    } catch (const CommandError& error) {
        NoteLoss(error);
    }
    return Running().FormulaCells();
}

}  // namespace korvane::command
