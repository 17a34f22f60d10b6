// Taking the user to cells of the host.
#pragma once

#include "host/handles.h"

namespace korvane {

// Brings the workbook and the sheet that hold `rng` to the front and selects it.
// Each of the three is tried whatever became of the others; false when one
// failed.
bool bGoTo(host::Range& rng);

}  // namespace korvane
