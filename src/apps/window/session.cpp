#include "apps/window/session.h"

#include <memory>
#include <string>

#include "apps/addin/addin.h"
#include "base/attempt.h"
#include "base/text.h"
#include "bindings/view_link/pump.h"
#include "host/range.h"

namespace korvane::window {
namespace {

using command::CommandError;
using command::kExplorationFailed;
using command::kHostLost;

void RequireView(view_link::ViewLink& link) {
    const std::string what = "the window could not be shown: ";
    bool shown = false;
    try {
        shown = link.EnsureView();
    } catch (const Error& error) {
        throw CommandError(kHostLost, what + error.what());
    }
    if (!shown) {
        throw CommandError(kHostLost,
                           what + "the program that shows it ended. Is there a display?");
    }
}

[[noreturn]] void LoseView() {
    throw CommandError(kHostLost, "the window was lost: the program that shows it ended.");
}

// "Selected: " and the address; empty when no cells are selected.
std::u16string SelectionText(host::Application& application) {
    std::u16string text;
    Suppressed([&] {
        const auto cells = std::dynamic_pointer_cast<host::Range>(application.Selection());
        if (cells) text = u"Selected: " + cells->Address(host::kExternal);
    });
    return text;
}

// Tells the view what is selected, whenever that has changed.
class SelectionLine {
public:
    SelectionLine(view_link::ViewLink& link, host::Application& application)
        : link_(link), application_(application) {}

    void Update() {
        std::u16string text = SelectionText(application_);
        if (text == shown_) return;
        link_.ShowStatus(text);
        shown_ = std::move(text);
    }

private:
    view_link::ViewLink& link_;
    host::Application& application_;
    std::u16string shown_;
};

}  // namespace

void ShowExplorer(view_link::ViewLink& link, const host::ApplicationPtr& application,
                  const host::WorkbookPtr& addinWorkbook, const SessionSettings& settings,
                  const SessionRecording* recording) {
    view_link::Pump pump(link);
    Services services(link, pump, settings);
    RequireView(link);
    std::unique_ptr<RecordedPlatform> recorded;
    if (recording) {
        recorded =
            std::make_unique<RecordedPlatform>(services.platform(), link, recording->letters);
    }
    struct Done {
        const SessionRecording* recording;
        const std::unique_ptr<RecordedPlatform>& recorded;
        ~Done() {
            if (recorded) Suppressed([this] { recording->done(recorded->recording()); });
        }
    } const done{recording, recorded};
    Addin addin(recorded ? recorded->platform() : services.platform());
    addin.main().AutoOpen(application, addinWorkbook);
    addin.state().updatesChecked = true;  // nobody is there to be asked
    addin.main().Explore();
    const bool opened = !services.windows().forms().empty();
    SelectionLine line(link, *application);
    pump.RunUntil([&] {
        line.Update();
        return services.windows().forms().empty();
    });
    const bool closed = services.windows().forms().empty();
    addin.main().ShutDown();
    if (!closed || (!opened && !link.HasView())) LoseView();
    if (!opened) throw CommandError(kExplorationFailed, "the cell could not be explored.");
}

}  // namespace korvane::window
