// `korvane explore`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/command/document.h"

namespace korvane::command {

struct ExploreOptions {
    std::vector<std::string> arguments;  // BOOK CELL..., or CELL... with a script
    std::optional<std::string> script;   // a scripted document in place of BOOK
    std::optional<bool> functions;       // default: as the script says, else shown
    bool precise = false;
    bool json = false;
    bool all = false;                   // every formula cell, in place of CELL...
    bool window = false;                // one cell, in a window
    std::optional<std::string> record;  // a file for the window's session; with a script
    int cellTimeout = 30;               // seconds that one cell may take with `all`
};

// Explores and prints to standard output. Throws CommandError.
ExitCode RunExplore(const ExploreOptions& options);

}  // namespace korvane::command
