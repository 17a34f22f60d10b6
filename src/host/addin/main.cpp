#include "host/addin/main.h"

#include <vector>

#include "base/attempt.h"
#include "base/number.h"
#include "host/addin/busy.h"
#include "host/addin/controls.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

constexpr const char16_t* kModule = u"CMain";
constexpr const char16_t* kRibbonExplore = u"kvx2Explore";

// "12.0" reads as 12 and "9.0" as 9: the first two characters count.
bool bHasRibbon(const std::u16string& sVersion) {
    constexpr double kFirstWithRibbon = 12;
    return LeadingNumber(sVersion.substr(0, 2)) >= kFirstWithRibbon;
}

}  // namespace

CMain::~CMain() {
    if (state_.startedBy != this) return;
    state_.startedBy = nullptr;
    state_.running = false;
    SaveApplicationSettings();
    Suppressed([this] { CloseWindows(); });
    state_.ReleaseWhenIdle();
}

void CMain::AutoOpen(const host::ApplicationPtr& application, const host::WorkbookPtr& workbook) {
    // What was shut down while a command waits has to go first.
    if (state_.startedBy || state_.IsReleaseDue()) return;
    state_.startedBy = this;
    const bool started =
        AtEntryPoint(state_.errors, kModule, u"Auto_Open", [&] { Start(application, workbook); });
    if (!started) ShutDown();
}

void CMain::Start(const host::ApplicationPtr& application, const host::WorkbookPtr& workbook) {
    if (!application || !workbook) throw Error(kErrorObjectMissing, u"The host gave no object");
    state_.application = application;
    state_.workbook = workbook;
    state_.hostHasRibbon = bHasRibbon(application->Version());
    state_.hostWindow = state_.platform.screen.FindWindow(application->Caption());
    application->SetStatusBar(Value(u"Loading Korvane Explorer, please wait..."));
    InitialiseShared();
    if (!MControls::bBuildCommandBars(state_)) RaiseStepFailed();
    state_.controlEvents = std::make_unique<CControlEvents>(*application, commands_, state_.errors);
    state_.controlEvents->Bind();
    // A host refuses keys while no workbook is open; the first activation of a
    // window tries again.
    state_.options->bHookKeys();
    state_.applicationEvents =
        std::make_unique<CAppEventHandler>(*application, *state_.options, state_.errors);
    EndBusy(state_);
    state_.running = true;
}

void CMain::InitialiseShared() {
    std::u16string folder = state_.workbook->Path();
    if (folder.empty() || folder.back() != u'\\') folder += u'\\';
    state_.addinFolder = folder;
    state_.helpFile = folder + u"Korvane Explorer.chm";
    state_.shuttingDown = false;
    state_.options =
        std::make_unique<CGlobalOptions>(state_.platform.settings, *state_.application);
    state_.options->Init();
    state_.history = std::make_unique<CHistory>(*state_.application, state_.errors);
    state_.lExplorerCount = 0;
    state_.updatesChecked = false;
    state_.random.seed(state_.platform.clock.Ticks());
}

void CMain::AutoClose() { SaveApplicationSettings(); }

void CMain::AddinUninstall() {
    AtEntryPoint(state_.errors, kModule, u"AddinUninstall",
                 [this] { MControls::RemoveAll(state_); });
}

void CMain::SaveApplicationSettings() {}

void CMain::CloseWindows() {
    std::vector<platform::WindowId> open;
    for (const auto& [id, form] : state_.platform.windows.forms()) open.push_back(id);
    // The newest first: one that tinted cells which another had tinted before
    // gives them back as it found them. Closing one may close others.
    for (auto id = open.rbegin(); id != open.rend(); ++id) {
        const auto form = state_.platform.windows.forms().find(*id);
        if (form == state_.platform.windows.forms().end()) continue;
        form->second->onQueryClose = {};  // nothing may stay
        Suppressed([&form] { form->second->Unload(); });
    }
}

void CMain::ShutDown() {
    if (!state_.startedBy) return;
    state_.startedBy = nullptr;
    state_.running = false;
    state_.shuttingDown = true;
    SaveApplicationSettings();
    Suppressed([this] { MControls::RemoveAll(state_); });
    Suppressed([this] { CloseWindows(); });
    state_.ReleaseWhenIdle();
}

void CMain::Explore() { commands_.EP_Explore(0); }

void CMain::GoBack() { commands_.EP_GoBack(); }

void CMain::RibbonOnLoad(const host::IRibbonUIPtr& ribbon) { state_.ribbon = ribbon; }

void CMain::RibbonCommand(const host::IRibbonControlPtr& control) {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"RibbonCommand",
                 [&] { Dispatch(commands_, sCommandOfRibbonId(control->Id())); });
}

void CMain::RibbonGetButtonVisible(const host::IRibbonControlPtr& control, Value& returnedVal) {
    if (!state_.IsRunning()) return;
    AtEntryPoint(state_.errors, kModule, u"RibbonGetButtonVisible", [&] {
        if (control->Id() == kRibbonExplore) returnedVal = Value(state_.options->bShowIcon());
    });
}

}  // namespace korvane
