// The host's enumeration values that the system passes or compares, under the
// object model's names.
#pragma once

namespace korvane::host {

inline constexpr int xlDefault = -4143;            // Application.Cursor: the normal pointer
inline constexpr int xlCalculationManual = -4135;  // Application.Calculation
inline constexpr int xlCalculationAutomatic = -4105;
inline constexpr int xlColorIndexNone = -4142;       // Interior.ColorIndex: no fill
inline constexpr int xlColorIndexAutomatic = -4105;  // Interior.ColorIndex: the default fill
inline constexpr int msoControlButton = 1;           // type of a command-bar control
inline constexpr int msoControlPopup = 10;           // type of a submenu
inline constexpr int msoButtonIcon = 1;              // CommandBarButton.Style: icon only

}  // namespace korvane::host
