// `korvane replay`, and what `korvane explore --window --record` writes.
#pragma once

#include <string>

#include "apps/command/document.h"

namespace korvane::command {

// Exit codes of their own, as those of programs that compare.
inline constexpr int kSame = 0;
inline constexpr int kDiffers = 1;
inline constexpr int kUnreadable = 2;

// Runs a recorded session again and prints where it is not as it was recorded.
// Returns one of the codes above; never throws for what is in the file.
int RunReplay(const std::string& path);

}  // namespace korvane::command
