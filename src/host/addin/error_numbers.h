// The error numbers that the system itself gives a meaning.
#pragma once

namespace korvane {

inline constexpr int kUserBreak = 18;          // the user interrupted the host; never shown
inline constexpr int kStepFailed = 9997;       // a step reported failure; raised to reach a handler
inline constexpr int kAlreadyReported = 9998;  // was told to the user; neither logged nor shown

}  // namespace korvane
