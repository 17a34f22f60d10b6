// The platform of a session that is recorded: what its windows show and take, and
// what else it depends on.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "bindings/view_link/view_link.h"
#include "platform/platform.h"
#include "platform/window/recording.h"
#include "platform/window/windows.h"

namespace korvane::window {

// The letters under which the notes stand in the recording.
struct RecordingLetters {
    char metrics = 0;
    char setting = 0;
    char answer = 0;
};

class RecordedPlatform : private platform::SettingsStore, private platform::MessageBoxes {
public:
    // Both outlive it. Records from now on.
    RecordedPlatform(platform::Platform& services, const view_link::ViewLink& link,
                     const RecordingLetters& letters);
    ~RecordedPlatform() override;
    RecordedPlatform(const RecordedPlatform&) = delete;
    RecordedPlatform& operator=(const RecordedPlatform&) = delete;

    platform::Platform& platform() { return platform_; }
    // Frames, as Recorder writes them.
    const std::string& recording() const { return recorder_.recording(); }

private:
    class WithMetrics : public platform::Recorder {
    public:
        explicit WithMetrics(RecordedPlatform& owner) : owner_(owner) {}
        void Apply(const platform::Change& change) override;
        void Hear(const platform::Event& event) override;

    private:
        RecordedPlatform& owner_;
    };

    void NoteMetrics();
    std::u16string Get(const std::u16string& application, const std::u16string& section,
                       const std::u16string& key, const std::u16string& defaultText) override;
    void Save(const std::u16string& application, const std::u16string& section,
              const std::u16string& key, const std::u16string& text) override;
    platform::MessageAnswer Show(const platform::Message& message) override;

    platform::Platform& services_;
    const view_link::ViewLink& link_;
    const RecordingLetters letters_;
    WithMetrics recorder_{*this};
    platform::ViewMetrics metrics_;
    std::set<std::u16string> known_;  // settings that were noted or written
    platform::Platform platform_;
};

}  // namespace korvane::window
