#include "platform/window/recording.h"

#include "platform/window/codec.h"
#include "platform/window/windows.h"

namespace korvane::platform {
namespace {

constexpr char kChange = 'c';
constexpr char kEvent = 'e';

}  // namespace

void Recorder::Note(char kind, std::string_view bytes) {
    AppendFrame(recording_, kind + std::string(bytes));
}

void Recorder::Apply(const Change& change) { AppendFrame(recording_, kChange + Encode(change)); }

void Recorder::Hear(const Event& event) { AppendFrame(recording_, kEvent + Encode(event)); }

std::optional<Event> Replay::NextEvent() {
    std::string_view message;
    while (!rest_.empty() && !broken_) {
        broken_ = TakeFrame(rest_, message) != FrameState::kWhole || message.empty();
        if (broken_ || message.front() == kChange) continue;
        auto event = DecodeEvent(message.substr(1));
        broken_ = message.front() != kEvent || !event;
        if (!broken_) return event;
    }
    return std::nullopt;
}

bool Replay::Step() {
    const auto event = NextEvent();
    if (event) windows_->Deliver(*event);
    return event.has_value();
}

bool Replay::PlayAll() {
    while (Step()) {
    }
    return !broken_;
}

void Replay::Run(const std::function<bool()>& done) {
    while (!done() && Step()) {
    }
}

}  // namespace korvane::platform
