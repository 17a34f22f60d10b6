// A world whose host is a running Calc with the world's workbook in a window. What
// its user sees is read from the office, not through the system's own binding.
#pragma once

#include "scenarios/world_host.h"

namespace korvane::test {

std::unique_ptr<WorldHost> MakeCalcWorldHost();

}  // namespace korvane::test
