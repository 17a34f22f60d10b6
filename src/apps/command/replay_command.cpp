#include "apps/command/replay_command.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>

#include "apps/addin/addin.h"
#include "apps/addin/product.h"
#include "apps/command/recorded_session.h"
#include "apps/command/scripted_document.h"
#include "apps/command/terminal.h"
#include "base/text.h"
#include "bindings/resources/built_in_pictures.h"
#include "bindings/scripted/load_document.h"
#include "bindings/scripted/scripted_platform.h"
#include "platform/window/codec.h"
#include "platform/window/windows.h"

namespace korvane::command {
namespace {

// The user of the recording answers.
class RecordedAnswers : public platform::MessageBoxes {
public:
    RecordedAnswers(platform::CheckedReplay& replay, platform::Windows& windows)
        : replay_(replay), windows_(windows) {}
    platform::MessageAnswer Show(const platform::Message& /*message*/) override {
        const platform::ModalScope scope(windows_, nullptr);
        const auto answer = replay_.TakeNote(kAnswerNote);
        return answer && answer->size() == 1
                   ? static_cast<platform::MessageAnswer>(answer->front() - '0')
                   : platform::MessageAnswer::kOK;
    }

private:
    platform::CheckedReplay& replay_;
    platform::Windows& windows_;
};

class Session {
public:
    explicit Session(RecordedSession recorded)
        : document_(scripted::LoadDocument(recorded.head.at("document"))),
          replay_(std::move(recorded.frames)) {
        if (recorded.head.contains("cell")) {
            document_.Select(ToUtf16(recorded.head.at("cell").get<std::string>()));
        }
        document_.host().version = u"12.0";
        document_.host().hwnd = 0;
        document_.host().thisWorkbookName = u"korvane";
        replay_.stops = kAnswerNote;
        replay_.onNote = [this](const platform::RecordedFrame& note) { TakeNote(note); };
        replay_.PlayTo(windows_);
    }

    // Nothing when all came as it was recorded.
    std::optional<std::string> Play() {
        Addin addin(platform_);
        windows_.Attach(replay_);
        addin.main().AutoOpen(document_.host().Application(), document_.host().AddinWorkbook());
        addin.state().updatesChecked = true;
        addin.main().Explore();
        replay_.PlayAll();
        windows_.Detach(replay_);
        addin.main().ShutDown();
        return replay_.difference();
    }
    void TakeSettings(const std::vector<platform::RecordedFrame>& frames) {
        for (const auto& frame : frames) {
            if (frame.kind == kMetricsNote) {
                TakeNote(frame);  // the first desktop is there before all else
                break;
            }
        }
        for (const auto& frame : frames) {
            if (frame.kind != kSettingNote) continue;
            const auto texts = nlohmann::json::parse(frame.bytes).get<std::vector<std::string>>();
            scripted_.settings
                .texts[{ToUtf16(texts.at(0)), ToUtf16(texts.at(1)), ToUtf16(texts.at(2))}] =
                ToUtf16(texts.at(3));
        }
    }
    int events() const { return replay_.events(); }

private:
    void TakeNote(const platform::RecordedFrame& note) {
        if (note.kind != kMetricsNote) return;
        const auto message = platform::DecodeFromView(note.bytes);
        const auto* metrics = message ? std::get_if<platform::ViewMetrics>(&*message) : nullptr;
        if (!metrics) return;
        windows_.frame = metrics->frame;
        scripted_.screen.twipsPerPixelX = metrics->twipsPerPixelX;
        scripted_.screen.twipsPerPixelY = metrics->twipsPerPixelY;
        scripted_.screen.windowBackground = metrics->windowBackground;
        scripted_.screen.monitors.clear();
        const auto rect = [](const platform::MonitorPlace& place) {
            return platform::PixelRect{place.left, place.top, place.right, place.bottom};
        };
        for (const auto& monitor : metrics->monitors) {
            scripted_.screen.monitors.push_back({rect(monitor.bounds), rect(monitor.work)});
        }
    }

    ScriptedDocument document_;
    platform::CheckedReplay replay_;
    scripted::ScriptedPlatform scripted_{document_.host().sharedAccesses()};
    platform::Windows windows_{replay_};
    RecordedAnswers answers_{replay_, windows_};
    resources::BuiltInPictures pictures_;
    platform::Platform platform_{
        scripted_.clock, scripted_.files, answers_, pictures_, scripted_.screen, scripted_.settings,
        scripted_.shell, scripted_.urls,  windows_, Version(), Links()};
};

}  // namespace

int RunReplay(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    auto recorded = file || file.eof() ? ReadSession(bytes) : std::nullopt;
    if (!recorded) {
        std::fprintf(stderr,
                     file.is_open() ? "korvane: %s is not a whole recording\n"
                                    : "korvane: there is no such file, or it cannot be read: %s\n",
                     OneLine(path).c_str());
        return kUnreadable;
    }
    try {
        const auto frames = recorded->frames;
        Session session(std::move(*recorded));
        session.TakeSettings(frames);
        if (const auto difference = session.Play()) {
            std::printf("%s differs %s\n", OneLine(path).c_str(), difference->c_str());
            return kDiffers;
        }
        std::printf("%s: the same, %d events\n", OneLine(path).c_str(), session.events());
        return kSame;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "korvane: %s cannot be replayed: %s\n", OneLine(path).c_str(),
                     OneLine(error.what()).c_str());
        return kUnreadable;
    }
}

}  // namespace korvane::command
