// The program that shows windows.
#pragma once

#include <string>
#include <vector>

namespace korvane::command {

// What starts it: the program that KORVANE_VIEW names, else the one beside this
// program. Throws CommandError kHostLost when it is missing.
std::vector<std::string> FindView();

}  // namespace korvane::command
