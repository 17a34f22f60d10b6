// Which window of the desktop another one stays above.
#pragma once

class QWindow;

namespace korvane::qt {

// Puts the window above `owner`, which may be another program's, or above none when it
// is null; also while it is shown, which the toolkit alone does not manage on X11. A
// window that `owner` stays above itself is left without one.
void SetOwner(QWindow& window, QWindow* owner);

}  // namespace korvane::qt
