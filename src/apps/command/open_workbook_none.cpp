// Builds without a spreadsheet host.
#include "apps/command/open_workbook.h"

namespace korvane::command {

std::unique_ptr<Document> OpenWorkbook(const std::string& /*path*/,
                                       std::optional<std::chrono::milliseconds> /*cellTime*/) {
    throw CommandError(
        kHostLost, "this build has no spreadsheet host; explore a scripted document with --script");
}

}  // namespace korvane::command
