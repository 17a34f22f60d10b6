// Builds with LibreOffice Calc as the host.
#include "apps/command/office_document.h"
#include "apps/command/open_workbook.h"

namespace korvane::command {

std::unique_ptr<Document> OpenWorkbook(const std::string& path,
                                       std::optional<std::chrono::milliseconds> cellTime) {
    OfficeTimes times;
    times.explore = cellTime;
    return std::make_unique<OfficeDocument>(path, times);
}

}  // namespace korvane::command
