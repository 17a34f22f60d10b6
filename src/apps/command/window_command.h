// `korvane explore --window`.
#pragma once

#include "apps/command/explore_command.h"

namespace korvane::command {

// Shows one cell in an explorer window; ends when the last one is closed.
// Throws CommandError.
ExitCode RunWindow(const ExploreOptions& options);

}  // namespace korvane::command
