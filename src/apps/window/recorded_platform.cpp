#include "apps/window/recorded_platform.h"

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "platform/window/codec.h"

namespace korvane::window {
namespace {

std::u16string Name(const std::u16string& application, const std::u16string& section,
                    const std::u16string& key) {
    return application + u'\0' + section + u'\0' + key;
}

}  // namespace

RecordedPlatform::RecordedPlatform(platform::Platform& services, const view_link::ViewLink& link,
                                   const RecordingLetters& letters)
    : services_(services),
      link_(link),
      letters_(letters),
      platform_{services.clock, services.files, *this,         services.resources, services.screen,
                *this,          services.shell, services.urls, services.windows,   services.version,
                services.links} {
    NoteMetrics();
    services_.windows.Attach(recorder_);
}

RecordedPlatform::~RecordedPlatform() { services_.windows.Detach(recorder_); }

void RecordedPlatform::WithMetrics::Apply(const platform::Change& change) {
    owner_.NoteMetrics();
    Recorder::Apply(change);
}

void RecordedPlatform::WithMetrics::Hear(const platform::Event& event) {
    owner_.NoteMetrics();
    Recorder::Hear(event);
}

// A desktop that has changed meanwhile counts from the next message on.
void RecordedPlatform::NoteMetrics() {
    if (link_.metrics() == metrics_) return;
    metrics_ = link_.metrics();
    recorder_.Note(letters_.metrics, platform::Encode(platform::FromView(metrics_)));
}

std::u16string RecordedPlatform::Get(const std::u16string& application,
                                     const std::u16string& section, const std::u16string& key,
                                     const std::u16string& defaultText) {
    const std::u16string text = services_.settings.Get(application, section, key, defaultText);
    if (known_.insert(Name(application, section, key)).second) {
        const nlohmann::json note{ToUtf8(application), ToUtf8(section), ToUtf8(key), ToUtf8(text)};
        recorder_.Note(letters_.setting, note.dump());
    }
    return text;
}

void RecordedPlatform::Save(const std::u16string& application, const std::u16string& section,
                            const std::u16string& key, const std::u16string& text) {
    known_.insert(Name(application, section, key));
    services_.settings.Save(application, section, key, text);
}

platform::MessageAnswer RecordedPlatform::Show(const platform::Message& message) {
    const platform::MessageAnswer answer = services_.messageBoxes.Show(message);
    const char digit = static_cast<char>('0' + static_cast<int>(answer));
    recorder_.Note(letters_.answer, {&digit, 1});
    return answer;
}

}  // namespace korvane::window
