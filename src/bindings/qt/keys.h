// Key presses as the windows hear of them.
#pragma once

#include <QKeyEvent>
#include <cstdint>

namespace korvane::qt {

// The key's code on the hosts' platform; 0 for a key that has none there. Letters
// held with Ctrl or Alt have their Latin code on keyboards of any script.
std::int32_t KeyCode(const QKeyEvent& event);

// The sum of kShift, kCtrl and kAlt.
std::int32_t ShiftState(Qt::KeyboardModifiers modifiers);

}  // namespace korvane::qt
