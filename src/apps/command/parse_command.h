// `korvane parse`: formula texts from a stream, taken apart without a document.
#pragma once

#include <cstdio>

#include "apps/command/document.h"
#include "apps/command/terminal.h"

namespace korvane::command {

struct ParseOptions {
    bool functions = true;
    bool json = false;
    bool count = false;  // only totals
};

// Reads one formula per line from `in` and writes to `out`, in memory that does
// not grow with the stream. kExplorationFailed when one could not be parsed.
ExitCode RunParse(const ParseOptions& options, const Style& style, std::FILE* in, std::FILE* out);

}  // namespace korvane::command
