// The X server, where windows are on one.
#pragma once

struct xcb_connection_t;

namespace korvane::qt {

// The toolkit's own connection to it; null where the toolkit uses another window system.
xcb_connection_t* XServer();

}  // namespace korvane::qt
