// Builds without a spreadsheet host.
#include "apps/command/open_workbook.h"

namespace korvane::command {
namespace {

[[noreturn]] void Refuse() {
    throw CommandError(
        kHostLost, "this build has no spreadsheet host; explore a scripted document with --script");
}

}  // namespace

std::unique_ptr<Document> OpenWorkbook(const std::string& /*path*/,
                                       std::optional<std::chrono::milliseconds> /*cellTime*/) {
    Refuse();
}

void ShowWorkbook(const std::string& /*path*/, const std::u16string& /*cell*/,
                  const WindowModes& /*modes*/) {
    Refuse();
}

}  // namespace korvane::command
