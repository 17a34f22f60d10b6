// Which process wrote a journal, and whether it lives.
#pragma once

#include "bindings/calc/desk/journal_text.h"

namespace korvane::calc {

// Of this process.
ProcessMark OwnMark();
bool IsAlive(const ProcessMark& process);

}  // namespace korvane::calc
