// Explorer windows for a host that has no windows itself.
#pragma once

#include "apps/command/document.h"
#include "apps/window/recorded_platform.h"
#include "apps/window/services.h"
#include "bindings/view_link/view_link.h"
#include "host/application.h"
#include "host/workbook.h"

namespace korvane::window {

// A session that is recorded.
struct SessionRecording {
    RecordingLetters letters;
    // Called once with the frames, however the session ends.
    std::function<void(const std::string& frames)> done;
};

// Runs the add-in in the host, explores the host's active cell in a window of
// the link's view (starts one when there is none), and returns when the last
// window is closed. The view shows the selected cells as a line of text.
//
// Throws CommandError: kHostLost when there is no view or it is lost,
// kExplorationFailed when no window came about; the user was told why.
void ShowExplorer(view_link::ViewLink& link, const host::ApplicationPtr& application,
                  const host::WorkbookPtr& addinWorkbook, const SessionSettings& settings,
                  const SessionRecording* recording = nullptr);

}  // namespace korvane::window
