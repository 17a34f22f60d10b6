// The switches and results of one exploration, shared by all elements of its
// tree, and the host's calculation state that it must put back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"
#include "host/application.h"
#include "host/range.h"

namespace korvane {

class CElementOptions {
public:
    // Both must outlive the options; `reporter` is told of an exploration that
    // fails.
    CElementOptions(host::Application& application, ErrorReporter& reporter)
        : application_(application), reporter_(reporter) {}

    bool bEveryFunction = false;     // every function call becomes an element
    bool bPreciseCalc = false;       // evaluate function parts in the explored cell itself
    host::RangePtr rngRootCell;      // the explored cell
    bool bMaybeImprecise = false;    // result: a value may differ from the cell's own
    bool bContainsIndirect = false;  // result: an INDIRECT was met

    // Forgets what was asked of the host about the root cell: a new exploration
    // begins, perhaps of another cell.
    void ForgetRoot();
    // Forgets a saved state without touching the host.
    void ClearCalc();
    // Saves the host's calculation mode and screen updating, then sets manual
    // and off. Does nothing while a state is saved, so that the first one counts.
    void SaveCalc();
    // Puts a saved state back.
    void RestoreCalc();

    host::Application& application() const { return application_; }
    ErrorReporter& reporter() const { return reporter_; }

    // The name of the root cell's workbook, and the names of its sheet and of its
    // workbook; asked of the host once per exploration. Raise when the host fails.
    const std::u16string& RootWorkbookName();
    host::Names& SheetNames();
    host::Names& WorkbookNames();

    // The defined names whose definitions are being parsed, outermost first: a
    // name within itself must stay a leaf.
    std::vector<std::u16string> expandingNames;

    // How often a part was evaluated in the explored cell itself.
    std::int64_t preciseEvaluations = 0;

    // Counts an element that is about to be built. Raises kErrorOutOfStack
    // beyond 200,000, far more than the longest formula holds: names that use
    // each other twice can spell out a tree that no memory holds.
    void CountElement();

private:
    host::Application& application_;
    ErrorReporter& reporter_;

    bool bSaved_ = false;
    int lSavedCalculation_ = 0;
    bool bSavedScreenUpdating_ = false;

    std::optional<std::u16string> rootWorkbookName_;
    host::NamesPtr sheetNames_;
    host::NamesPtr workbookNames_;
    std::int32_t elements_ = 0;
};

}  // namespace korvane
