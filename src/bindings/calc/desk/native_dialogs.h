// Dialogs that the desktop's own toolkit shows for the office.
#pragma once

namespace korvane::calc {

// A dialog of GTK's waits for an answer. With its GTK toolkits the office has most of
// its dialogs made by GTK itself: they are none of the windows that the office's own
// interfaces list. False where GTK is not loaded. To be asked on the main thread.
bool IsGtkDialogWaiting();

}  // namespace korvane::calc
