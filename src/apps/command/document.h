// What `korvane explore` explores: a scripted document, or a workbook in an
// office process of its own.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "apps/report/exploration.h"

namespace korvane::command {

enum ExitCode : int {
    kDone = 0,
    kExplorationFailed = 1,
    kUsage = 2,
    kNotFound = 3,  // no such file, sheet, cell or name; or a file that cannot be read as one
    kHostLost = 4,  // the host could not be started, or was lost
};

// Ends the command: one clear line for standard error that says what to do.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitCode code, const std::string& message)
        : std::runtime_error(message), code_(code) {}
    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

// A host that was ended because it did not answer in its time: asked the same
// again, it would need as long.
class TimeIsUp : public CommandError {
public:
    explicit TimeIsUp(const std::string& message) : CommandError(kHostLost, message) {}
};

class Document {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    virtual ~Document() = default;

    // Explores a cell: "Sheet!B7", "'My Sheet'!B7", "B7" on the active sheet, a
    // defined name, or a range (its first cell). Throws CommandError kNotFound
    // when there is no such cell, kHostLost when the host is gone; an
    // exploration that fails is a report with `ok` false.
    virtual ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                                      bool bPreciseCalc) = 0;

    // The external addresses of all cells that hold a formula, sheet by sheet and
    // row by row; Explore takes them. Throws CommandError kHostLost.
    virtual std::vector<std::u16string> FormulaCells() = 0;
};

}  // namespace korvane::command
