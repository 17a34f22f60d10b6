// Builds without a spreadsheet host.
#include "apps/command/document.h"
#include "apps/command/open_command.h"

namespace korvane::command {

void RunOpen(const OpenOptions& /*options*/) {
    throw CommandError(kHostLost, "this build has no spreadsheet host");
}

}  // namespace korvane::command
