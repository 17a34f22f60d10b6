// An exploration as text: the formula, the tree in three columns, and what the
// reader should know about the values.
#pragma once

#include <string>

#include "apps/command/terminal.h"
#include "apps/report/exploration.h"

namespace korvane::command {

// The whole text, line feeds included.
std::string PrintReport(const ExplorationReport& report, const Style& style);

// The parts of a formula that was parsed without a document: an outline of their
// texts.
std::string PrintOutline(const PartReport& root, const Style& style);

}  // namespace korvane::command
