// The help file, at its start page or at a topic of its map.
#pragma once

#include <cstdint>

namespace korvane {

struct SharedState;

namespace MHelp {

// Opens the help file beside the add-in: at the numbered topic of its map, or at
// the start page for 0 and below. Returns at once; the viewer runs on its own.
// Where there is no such file the user is told which one was tried. Raises when
// the viewer cannot be started.
void ShowHelp(SharedState& state, std::int32_t topic);

}  // namespace MHelp
}  // namespace korvane
