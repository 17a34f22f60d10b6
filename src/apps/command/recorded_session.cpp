#include "apps/command/recorded_session.h"

#include "platform/window/recording.h"

namespace korvane::command {

std::string RecordingStart(const nlohmann::json& document, const std::vector<std::string>& cell) {
    nlohmann::json head{{"document", document}};
    if (!cell.empty()) head["cell"] = cell.front();
    platform::Recorder start;
    start.Note(kHeadNote, head.dump());
    return std::string(kRecordingMark) + start.recording();
}

std::optional<RecordedSession> ReadSession(std::string_view file) {
    if (file.substr(0, kRecordingMark.size()) != kRecordingMark) return std::nullopt;
    auto frames = platform::ReadRecording(file.substr(kRecordingMark.size()));
    if (!frames || frames->empty() || frames->front().kind != kHeadNote) return std::nullopt;
    RecordedSession session;
    session.head = nlohmann::json::parse(frames->front().bytes, nullptr, false);
    if (!session.head.is_object() || !session.head.contains("document")) return std::nullopt;
    session.frames.assign(frames->begin() + 1, frames->end());
    return session;
}

}  // namespace korvane::command
