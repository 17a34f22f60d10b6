#include "host/addin/entry_points.h"

#include <utility>

#include "host/addin/busy.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

constexpr const char16_t* kModule = u"MEntryPoints";

}  // namespace

MEntryPoints::~MEntryPoints() {
    // Each takes itself off the list when it closes: off one that is not going.
    const auto open = std::move(explorers_);
    explorers_.clear();
}

bool MEntryPoints::bCellsAreSelected() {
    const ObjectPtr selection = state_.application->Selection();
    if (selection && selection->TypeName() == u"Range") return true;
    state_.platform.messageBoxes.Show({u"Nothing to explore. Select a cell first.",
                                       platform::kProductName, platform::MessageIcon::kInformation,
                                       platform::MessageButtons::kOK});
    return false;
}

void MEntryPoints::EP_Explore(std::int64_t hwndParent) {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"EP_Explore", [this, hwndParent] {
        if (!bCellsAreSelected()) return;
        if (!state_.updatesChecked) {
            state_.updatesChecked = true;
            windows_.CheckUpdates(false);
            if (!state_.IsRunning()) return;  // shut down while the user was asked
        }
        BusyScope busy(state_);
        OpenExplorer(hwndParent);
        busy.End();
    });
}

void MEntryPoints::OpenExplorer(std::int64_t hwndParent) {
    const auto explorer = windows_.NewExplorer();
    platform::Form& form = explorer->form();
    // An explorer that fails is closed as if the user did: tint, focus and the
    // count of windows are as before.
    struct Unload {
        platform::Form* form;
        ~Unload() {
            if (form) form->Unload();
        }
    } unload{&form};
    form.SetOwner(state_.hostWindow);
    explorer->SethwndParent(hwndParent);
    if (!explorer->bExplore()) RaiseStepFailed();
    if (!state_.IsRunning()) return;
    if (hwndParent == 0) state_.history->AddRange(state_.application->ActiveCell());
    form.Show();
    unload.form = nullptr;
    explorers_.push_back(explorer);
    form.onClosed = [this, which = explorer.get()] {
        std::shared_ptr<ExplorerWindow> closed;
        std::erase_if(explorers_, [&](auto& open) {
            if (open.get() != which) return false;
            closed = std::move(open);
            return true;
        });
        state_.platform.windows.LetGoLater(std::move(closed));
    };
}

void MEntryPoints::EP_GoBack() {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"EP_GoBack", [this] {
        if (!state_.history->bGoBack()) RaiseStepFailed();
    });
}

void MEntryPoints::ShowModal(const std::shared_ptr<CommandWindow>& window) {
    platform::Form& form = window->form();
    form.SetOwner(state_.hostWindow);
    form.ShowModal();
    // What it does when it closes must not be refused by a question to the user.
    form.onQueryClose = {};
    form.Unload();
}

void MEntryPoints::EP_Options() {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"EP_Options", [this] {
        BusyScope busy(state_);
        ShowModal(windows_.NewOptions());
        busy.End();
    });
}

void MEntryPoints::ShowAbout() {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"ShowAbout", [this] { ShowModal(windows_.NewAbout()); });
}

void MEntryPoints::ShowHelp(std::int32_t topic) {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"ShowHelp", [this, topic] { windows_.ShowHelp(topic); });
}

}  // namespace korvane
