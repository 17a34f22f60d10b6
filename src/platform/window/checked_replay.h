// A recorded session again, watched: does everything come as it was recorded?
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/modal.h"
#include "platform/window/view.h"

namespace korvane::platform {

class Windows;

// A change "c", an event "e", or a note of the program that recorded.
struct RecordedFrame {
    char kind = 0;
    std::string bytes;
    friend bool operator==(const RecordedFrame&, const RecordedFrame&) = default;
};
// Nothing when the recording breaks anywhere.
std::optional<std::vector<RecordedFrame>> ReadRecording(std::string_view recording);

// Brings the events of a recording and compares every change with those that
// were recorded. It is the modal loop of the windows, and one of their views.
class CheckedReplay : public ModalLoop, public View {
public:
    explicit CheckedReplay(std::vector<RecordedFrame> frames) : frames_(std::move(frames)) {}
    // The windows to play to; to be set, and the replay to be attached to them as
    // a view, before anything is loaded.
    void PlayTo(Windows& windows) { windows_ = &windows; }
    // Called for every note as it is passed. Notes of a kind in `stops` are not
    // passed: they wait for TakeNote.
    std::function<void(const RecordedFrame&)> onNote;
    std::string stops;

    // Brings all events, up to the first difference.
    void PlayAll();
    void Run(const std::function<bool()>& done) override;
    // Brings the events before the next note that stops, and takes that. Nothing,
    // which is a difference, when there is none of this kind.
    std::optional<std::string> TakeNote(char kind);

    // What was not as recorded, for people to read: how many events had come, what
    // was expected and what came instead. Nothing when all is the same so far.
    const std::optional<std::string>& difference() const { return difference_; }
    // How many events were brought.
    int events() const { return events_; }

    void Apply(const Change& change) override;

private:
    const RecordedFrame* Next();
    bool Step();
    void Differ(const std::string& got);
    void MissChanges();

    std::vector<RecordedFrame> frames_;
    std::size_t next_ = 0;
    Windows* windows_ = nullptr;
    int events_ = 0;
    std::string lastEvent_;
    std::optional<std::string> difference_;
};

}  // namespace korvane::platform
