#include "platform/window/checked_replay.h"

#include <array>
#include <utility>

#include "base/text.h"
#include "platform/window/codec.h"
#include "platform/window/windows.h"

namespace korvane::platform {
namespace {

constexpr char kChange = 'c';
constexpr char kEvent = 'e';

constexpr std::array kChangeNames{"window opened",  "window closed",  "property set",
                                  "rows cleared",   "row added",      "row expanded",
                                  "text formatted", "repaint wanted", "focus given"};
static_assert(kChangeNames.size() == std::variant_size_v<Change>);

// A message's bytes, for what has no better words.
std::string Hex(std::string_view bytes) {
    constexpr std::size_t kMost = 40;
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes.substr(0, kMost)) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[static_cast<unsigned char>(byte) & 15];
    }
    return bytes.size() > kMost ? text + "..." : text;
}

// The control by its name, where the window is still known.
std::string ControlText(const Windows& windows, WindowId window, ControlId control) {
    const auto form = windows.forms().find(window);
    const std::string number = "window " + std::to_string(window);
    if (control == kFormItself) return number;
    const Control* found = form == windows.forms().end() ? nullptr : form->second->Find(control);
    return number + ", " + (found ? ToUtf8(found->Name()) : "control " + std::to_string(control));
}

struct ValueText {
    std::string operator()(bool flag) const { return flag ? "true" : "false"; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(const Place& place) const {
        return std::to_string(place.left) + ";" + std::to_string(place.top) + ";" +
               std::to_string(place.width) + ";" + std::to_string(place.height);
    }
    std::string operator()(const TextSpan& span) const {
        return std::to_string(span.start) + "+" + std::to_string(span.length);
    }
    std::string operator()(const std::u16string& text) const { return '"' + ToUtf8(text) + '"'; }
    template <class T>
    std::string operator()(const std::vector<T>& list) const {
        return std::to_string(list.size()) + " items";
    }
};

std::string Text(const Windows& windows, const Change& change) {
    std::string text = kChangeNames[change.index()];
    std::visit(
        [&](const auto& what) {
            if constexpr (requires { what.control; }) {
                text += " in " + ControlText(windows, what.window, what.control);
            } else if constexpr (requires { what.window; }) {
                text += " in " + ControlText(windows, what.window, kFormItself);
            }
        },
        change);
    if (const auto* set = std::get_if<PropertySet>(&change)) {
        text += ", property " + std::to_string(static_cast<int>(set->property)) + " = " +
                std::visit(ValueText(), set->value);
    } else if (const auto* row = std::get_if<NodeAdded>(&change)) {
        text += ": " + ToUtf8(row->node.key) + " \"" + ToUtf8(row->node.text) + '"';
        for (const auto& cell : row->node.subItems) text += " | " + ToUtf8(cell);
    } else if (!std::holds_alternative<FormOpened>(change)) {
        text += " (" + Hex(Encode(change)) + ")";
    }
    return text;
}

}  // namespace

std::optional<std::vector<RecordedFrame>> ReadRecording(std::string_view recording) {
    std::vector<RecordedFrame> frames;
    std::string_view message;
    while (!recording.empty()) {
        if (TakeFrame(recording, message) != FrameState::kWhole || message.empty()) {
            return std::nullopt;
        }
        const std::string_view bytes = message.substr(1);
        if (message.front() == kChange && !DecodeChange(bytes)) return std::nullopt;
        if (message.front() == kEvent && !DecodeEvent(bytes)) return std::nullopt;
        frames.push_back({message.front(), std::string(bytes)});
    }
    return frames;
}

// The next frame that is no note in passing; null at the end.
const RecordedFrame* CheckedReplay::Next() {
    for (; next_ < frames_.size(); ++next_) {
        const RecordedFrame& frame = frames_[next_];
        if (frame.kind == kChange || frame.kind == kEvent) return &frame;
        if (stops.find(frame.kind) != std::string::npos) return &frame;
        if (onNote) onNote(frame);
    }
    return nullptr;
}

void CheckedReplay::Differ(const std::string& got) {
    if (difference_) return;
    const RecordedFrame* frame = Next();
    std::string expected = "the end";
    if (frame && frame->kind == kChange) {
        expected = Text(*windows_, *DecodeChange(frame->bytes));
    } else if (frame) {
        expected = frame->kind == kEvent ? "the next event" : "a message box";
    }
    difference_ = "after event " + std::to_string(events_) +
                  (lastEvent_.empty() ? "" : " (" + lastEvent_ + ")") +
                  ":\n  recorded: " + expected + "\n  now: " + got;
}

void CheckedReplay::Apply(const Change& change) {
    if (difference_) return;
    const RecordedFrame* frame = Next();
    if (!frame || frame->kind != kChange || frame->bytes != Encode(change)) {
        return Differ(Text(*windows_, change));
    }
    ++next_;
}

// What was recorded before the next event or note, and did not come.
void CheckedReplay::MissChanges() {
    const RecordedFrame* frame = Next();
    if (frame && frame->kind == kChange) Differ("nothing");
}

bool CheckedReplay::Step() {
    MissChanges();
    const RecordedFrame* frame = difference_ ? nullptr : Next();
    if (!frame || frame->kind != kEvent) return false;
    const auto event = DecodeEvent(frame->bytes);
    lastEvent_ = "kind " + std::to_string(event->index()) + ", " + Hex(frame->bytes);
    ++next_;
    ++events_;
    windows_->Deliver(*event);
    return true;
}

void CheckedReplay::PlayAll() {
    while (Step()) {
    }
    if (Next()) Differ("nothing");
}

void CheckedReplay::Run(const std::function<bool()>& done) {
    while (!done() && Step()) {
    }
}

std::optional<std::string> CheckedReplay::TakeNote(char kind) {
    while (Step()) {
    }
    const RecordedFrame* frame = difference_ ? nullptr : Next();
    if (!frame || frame->kind != kind) {
        Differ("a message box");
        return std::nullopt;
    }
    ++next_;
    return frame->bytes;
}

}  // namespace korvane::platform
