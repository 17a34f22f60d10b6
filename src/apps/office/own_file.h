// Where this component lies.
#pragma once

#include "bindings/calc/addin_workbook.h"

namespace korvane::office {

// The component's file; without a name when the loader does not say.
calc::AddinFile OwnFile();

}  // namespace korvane::office
