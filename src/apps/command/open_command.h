// `korvane open`: Calc as its user has it, with the add-in in it.
#pragma once

#include <string>
#include <vector>

namespace korvane::command {

struct OpenOptions {
    std::vector<std::string> books;  // none: a new spreadsheet
};

// Starts Calc with the user's own profile and the add-in, or has one that runs
// with it open the workbooks. This process becomes Calc: it returns never, or
// throws CommandError: kNotFound for a workbook that is missing, kHostLost when
// Calc cannot be started or runs without the add-in.
[[noreturn]] void RunOpen(const OpenOptions& options);

}  // namespace korvane::command
