// How a view knows the window by which a host keeps its own windows from their user.
#pragma once

namespace korvane::platform {

// Its title. A host shows such a window, of hardly a pixel, while a window or message box
// of ours waits for its answer. It is nobody's to type into: where the desktop gives it
// the keyboard all the same, the view gives that to what waits.
inline constexpr const char* kHostWaits = "Korvane Explorer is waiting";

}  // namespace korvane::platform
