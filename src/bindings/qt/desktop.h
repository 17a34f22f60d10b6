// What the desktop is like, and windows on it that are not our own.
#pragma once

#include <QMargins>

#include "bindings/qt/units.h"
#include "platform/window/link.h"

class QWindow;

namespace korvane::qt {

// `frame` is what the desktop's frames add to a window.
platform::ViewMetrics MetricsOf(const Units& units, const QMargins& frame);

// What frames add before any was seen; none where windows have no frames.
QMargins LikelyFrame();

// Whether these can be the sides of a frame, in pixels. A desktop that is still
// making the frame has it smaller than the window: the difference is no frame.
bool CanBeFrame(const QMargins& frame);

// What the desktop's frame adds to the window; null for no window, and before the
// desktop has made the frame.
QMargins MadeFrame(const QWindow* window);

// Whether numbers of foreign windows mean something to this desktop.
bool KnowsForeignWindows();

}  // namespace korvane::qt
