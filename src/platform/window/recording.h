// A session as bytes: every change that the windows made and every event that
// they took, in order. A user's recording becomes a test.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/modal.h"
#include "platform/window/view.h"

namespace korvane::platform {

class Windows;

// Frames (codec.h) of a byte, "c" or "e", and the change or event.
class Recorder : public View {
public:
    // Adds what else a session depends on, between the changes and events, under
    // a letter of its own.
    void Note(char kind, std::string_view bytes);
    void Apply(const Change& change) override;
    void Hear(const Event& event) override;
    const std::string& recording() const { return recording_; }

private:
    std::string recording_;
};

// Brings the events of a recording again. It is the modal loop of the windows
// that it plays to, because some events come while a call waits for the user.
class Replay : public ModalLoop {
public:
    // The text must outlive the replay.
    explicit Replay(std::string_view recording) : rest_(recording) {}
    // The windows to play to; to be set before the first event.
    void PlayTo(Windows& windows) { windows_ = &windows; }

    // Brings the next event; false when there is none left or the recording is
    // broken.
    bool Step();
    // Brings all that are left; false when the recording is broken.
    bool PlayAll();
    // Brings events until `done`, or until none is left.
    void Run(const std::function<bool()>& done) override;

private:
    std::optional<Event> NextEvent();

    std::string_view rest_;
    Windows* windows_ = nullptr;
    bool broken_ = false;
};

}  // namespace korvane::platform
