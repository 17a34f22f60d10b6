// Builds with LibreOffice Calc as the host.
#include "apps/command/office_document.h"
#include "apps/command/open_workbook.h"
#include "apps/command/view_program.h"
#include "bindings/posix/folders.h"
#include "bindings/view_link/limits.h"
#include "bindings/view_link/view_process.h"

namespace korvane::command {

std::unique_ptr<Document> OpenWorkbook(const std::string& path,
                                       std::optional<std::chrono::milliseconds> cellTime) {
    OfficeTimes times;
    times.explore = cellTime;
    return std::make_unique<OfficeDocument>(path, times);
}

void ShowWorkbook(const std::string& path, const std::u16string& cell, const WindowModes& modes) {
    view_link::ViewProcess view(FindView());  // comes up while the office does
    OfficeDocument::WindowRequest request;
    request.cell = cell;
    request.bEveryFunction = modes.bEveryFunction;
    request.bPreciseCalc = modes.bPreciseCalc;
    const posix::Folders folders = posix::UserFolders();
    request.config = folders.config;
    request.state = folders.state;
    {
        view_link::Socket link = view.TakeLink();
        OfficeDocument document(path, {}, {}, link.number());
        link.Close();  // the office has it now: when that ends, the view does
        document.ShowWindow(request);
    }
    view.End(view_link::LinkLimits().endGrace);
}

}  // namespace korvane::command
