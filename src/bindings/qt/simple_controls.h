// Buttons, boxes, labels and lines of a window.
#pragma once

#include <memory>

#include "bindings/qt/control_view.h"

namespace korvane::qt {

// The widget for a control of whatever kind; `parent` is its window's.
std::unique_ptr<ControlView> NewControl(Desk& desk, platform::WindowId window,
                                        platform::ControlId id, QWidget* parent);

}  // namespace korvane::qt
