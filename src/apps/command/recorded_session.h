// A recorded session as a file: the document, the desktop, the settings and the
// answers, between the changes and events of the windows.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/window/checked_replay.h"

namespace korvane::command {

// The first line of such a file.
inline constexpr std::string_view kRecordingMark = "korvane recording 1\n";
// Kinds of notes. The first frame is the head: JSON with "document" (scripted)
// and "cell" (absent for the active one).
inline constexpr char kHeadNote = 'h';
inline constexpr char kMetricsNote = 'm';  // ViewMetrics, from the next change on
inline constexpr char kSettingNote = 's';  // JSON [application, section, key, text]
inline constexpr char kAnswerNote = 'a';   // a message box was answered, the number

struct RecordedSession {
    nlohmann::json head;
    std::vector<platform::RecordedFrame> frames;
};

// The mark and the head of a session that explores a cell of the document, the
// active one when none is named.
std::string RecordingStart(const nlohmann::json& document, const std::vector<std::string>& cell);
// Nothing for what is no whole recording.
std::optional<RecordedSession> ReadSession(std::string_view file);

}  // namespace korvane::command
