#include "apps/command/window_command.h"

#include <cstdlib>
#include <fstream>

#include "apps/command/open_workbook.h"
#include "apps/command/recorded_session.h"
#include "apps/command/script_file.h"
#include "apps/command/scripted_document.h"
#include "apps/command/view_program.h"
#include "apps/window/session.h"
#include "base/text.h"
#include "bindings/scripted/scripted_host.h"

namespace korvane::command {
namespace {

// A host that never had bars, and whose windows nobody sees.
void MakeWindowless(scripted::ScriptedHost& host, const posix::Folders& folders) {
    host.version = u"12.0";
    host.hwnd = 0;
    host.thisWorkbookName = u"korvane";
    host.thisWorkbookPath = posix::PosixFiles(folders).StateFolder();
}

bool IsSet(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// The widgets' own complaint is long and ends the process that draws. Who chooses
// another program, or where that one draws, knows best.
void RequireDesktop() {
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "KORVANE_VIEW"})
        if (IsSet(name)) return;
    throw CommandError(kHostLost,
                       "there is no desktop to show the window on: neither DISPLAY nor "
                       "WAYLAND_DISPLAY is set");
}

void ShowScript(const ExploreOptions& options) {
    ScriptedDocument document(LoadOnlyScript(*options.script, "explore --window"));
    if (!options.arguments.empty()) document.Select(ToUtf16(options.arguments.front()));
    window::SessionSettings settings;
    settings.bEveryFunction = options.functions;
    if (!settings.bEveryFunction) settings.bEveryFunction = document.model().bEveryFunction;
    settings.bPreciseCalc = document.model().bPreciseCalc;
    if (options.precise) settings.bPreciseCalc = true;
    settings.folders = posix::UserFolders();
    MakeWindowless(document.host(), settings.folders);
    window::SessionRecording recording{{kMetricsNote, kSettingNote, kAnswerNote}, {}};
    if (options.record) {
        // Before the user has worked for nothing.
        if (!std::ofstream(*options.record, std::ios::binary)) {
            throw CommandError(kNotFound, "cannot write " + *options.record);
        }
        recording.done = [&options](const std::string& frames) {
            std::ofstream(*options.record, std::ios::binary)
                << RecordingStart(ReadDocuments(*options.script).front(), options.arguments)
                << frames;
        };
    }
    view_link::ViewLink link(FindView());
    window::ShowExplorer(link, document.host().Application(), document.host().AddinWorkbook(),
                         settings, options.record ? &recording : nullptr);
}

}  // namespace

ExitCode RunWindow(const ExploreOptions& options) {
    if (options.script ? options.arguments.size() > 1 : options.arguments.size() != 2) {
        throw CommandError(kUsage, "explore --window takes a workbook and one cell");
    }
    if (options.record && (!options.script || *options.script == "-")) {
        throw CommandError(kUsage, "--record needs a scripted document: --script FILE");
    }
    RequireDesktop();
    if (options.script) {
        ShowScript(options);
    } else {
        WindowModes modes{options.functions, {}};
        if (options.precise) modes.bPreciseCalc = true;
        ShowWorkbook(options.arguments[0], ToUtf16(options.arguments[1]), modes);
    }
    return kDone;
}

}  // namespace korvane::command
