// Looking for a newer version on the maker's web server.
#pragma once

namespace korvane {

struct SharedState;

// Asks the server for the latest version: for the user who asked (`bManual`), or
// by itself, at most every two days, or five after he declined a newer one. Only
// a manual check tells of a failure, or that all is well. An entry point: reports
// its own failures and never raises.
void EP_CheckUpdates(SharedState& state, bool bManual);

}  // namespace korvane
