#include "apps/desk/running_addin.h"

#include <set>
#include <utility>
#include <vector>

#include "apps/desk/frames.h"
#include "apps/desk/office_message.h"
#include "apps/desk/user_free.h"
#include "apps/desk/view_place.h"
#include "apps/office/own_file.h"
#include "base/attempt.h"
#include "base/text.h"
#include "bindings/calc/calc_sheets.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/desk/window_events.h"
#include "bindings/calc/uno_text.h"
#include "platform/window/windows.h"

namespace korvane::desk {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

window::SessionSettings Settings() {
    window::SessionSettings settings;
    settings.folders = posix::UserFolders();
    settings.addinFolder = ToUtf8(office::OwnFile().path);
    return settings;
}

// Where notes of what stands in the user's documents for a moment survive the office.
std::filesystem::path JournalFolder() {
    const auto state = posix::UserFolders().state;
    return state.empty() ? state : state / "korvane";
}

}  // namespace

RunningAddin::RunningAddin(const Context& context)
    : context_(context),
      thread_(context),
      commands_(std::make_shared<calc::CommandTable>()),
      link_(ViewCommand(ToUtf8(office::OwnFile().path))),
      watch_(thread_, link_),
      modal_(context, link_, watch_, [this] { return ActiveFrame(); }),
      services_(link_, modal_, Settings()),
      addin_(services_.platform()) {
    watch_.onTurn = [this] { modal_.Look(); };
    // Without a view nobody sees the tints or could take them off.
    link_.onLost = [this](view_link::Loss) {
        Suppressed([this] { CloseAll(); });
        modal_.Look();
    };
    link_.whyHeld = [this] { return WhyHeld(); };
    services_.screen().findWindow = [this](const std::u16string& title) -> std::int64_t {
        return application_ && application_->Caption() == title ? application_->Hwnd() : 0;
    };
    addin_.mayRun = [this](Addin::Kind kind) { return MayRun(kind); };
    commands_->Set(u"KorvaneExplore", [this] { Run(&CMain::Explore); });
    commands_->Set(u"KorvaneExplorerGoBack", [this] { Run(&CMain::GoBack); });
}

RunningAddin::~RunningAddin() { End(); }

OfficeModal::Frame RunningAddin::ActiveFrame() {
    return application_ ? application_->documents().ActiveFrame() : OfficeModal::Frame();
}

void RunningAddin::Start() {
    keys_ = std::make_unique<calc::ShortcutKeys>(context_);
    bars_ = std::make_shared<calc::CalcCommandBars>(context_, commands_);
    calc::DeskParts parts;
    parts.commandBars = [this]() -> host::CommandBarsPtr { return bars_; };
    parts.bindKey = [this](const std::u16string& key, const std::u16string& procedure) {
        keys_->Bind(key, calc::CommandUrl(procedure));
    };
    parts.releaseKey = [this](const std::u16string& key) { keys_->Release(key); };
    parts.connect = [this](host::ApplicationEvents& sink) {
        return calc::ConnectWindowEvents(
            context_, sink, [this](const Model& model) -> host::WorkbookPtr {
                auto* const open = application_->documents().Of(model);
                if (open == nullptr) return nullptr;
                return std::make_shared<calc::CalcWorkbook>(open->document);
            });
    };
    application_ = std::make_shared<calc::DeskApplication>(context_, office::OwnFile(), parts);
    guard_ = std::make_unique<calc::TintGuard>(
        context_, JournalFolder(), [this](const Model& model) -> calc::DocumentPtr {
            auto* const open = application_->documents().Of(model);
            return open != nullptr ? open->document : nullptr;
        });
    application_->documents().bringToFront = [this](const OfficeModal::Frame& frame) {
        return BringToFront(frame);
    };
    if (auto* const open = application_->documents().Active()) {
        guard_->Look(open->document->model());
    }
    isRunning_ = true;
    addin_.main().AutoOpen(application_, application_->ThisWorkbook());
    watch_.Update();
}

void RunningAddin::Run(void (CMain::*command)()) {
    if (!isRunning_) return;
    (addin_.main().*command)();
    watch_.Update();
}

// Asked before every command, wherever it comes from: a key, a menu, a window of
// ours.
bool RunningAddin::MayRun(Addin::Kind kind) {
    try {
        FollowActiveWindow();
        if (kind == Addin::Kind::kHelp) return true;
        if (!HasView()) return false;
        return kind != Addin::Kind::kCells || IsUserFree();
    } catch (...) {
        return false;  // the office is about to end
    }
}

bool RunningAddin::IsUserFree() {
    if (!IsAnswered()) return false;
    const std::u16string first = WhatIsToBeFinished(context_, ActiveFrame());
    if (first.empty()) return true;
    Suppressed([&] {
        services_.platform().messageBoxes.Show({first, platform::kProductName,
                                                platform::MessageIcon::kInformation,
                                                platform::MessageButtons::kOK});
    });
    return false;
}

// What he does in windows that stay open is carried out once he is free.
std::u16string RunningAddin::WhyHeld() {
    std::u16string first;
    Suppressed([&] { first = WhatIsToBeFinished(context_, ActiveFrame()); });
    return first;
}

// Windows that nobody shows would be worse than none.
bool RunningAddin::HasView() {
    std::u16string why;
    try {
        if (link_.EnsureView()) return true;
        why = u"it ended at once";
    } catch (const Error& error) {
        why = error.description();
    }
    ShowOfficeMessage(context_, ActiveFrame(),
                      u"The program that shows the windows cannot be started: " + why);
    return false;
}

void RunningAddin::NoteWindow(const Model& model) {
    Suppressed([&] {
        if (application_) application_->documents().NoteActive(model);
        if (guard_) guard_->Look(model);
        FollowActiveWindow();
        ReturnKeyboard(model);
        if (isRunning_ || isStarting_ || ends_) return;
        isStarting_ = true;
        // Later: a window that is being made does not take up a change of its bars.
        thread_.Post([weak = std::weak_ptr<char>(life_), this] {
            if (!weak.lock() || ends_) return;
            Suppressed([this] { Start(); });
            isStarting_ = false;  // one that failed is tried again by the next window
        });
    });
}

// New windows belong to the document that the user works in.
void RunningAddin::FollowActiveWindow() {
    if (!application_) return;
    Suppressed([this] {
        addin_.state().hostWindow = application_->Hwnd();
        services_.messageBoxes().owner = addin_.state().hostWindow;
    });
}

// We go to another window ourselves: all of ours come with us. A user who did it in one
// of them goes on there, so the office's window is raised by the view, which leaves the
// keyboard where it is.
bool RunningAddin::BringToFront(const OfficeModal::Frame& frame) {
    bool isDone = false;
    Suppressed([&] {
        const std::int64_t owner = calc::WindowHandle(frame);
        if (owner == 0) return;
        FollowActiveWindow();
        MoveAbove(owner);
        const auto& forms = services_.windows().forms();
        const auto acting = forms.find(link_.acting());
        if (acting == forms.end() || !acting->second->IsShown()) return;
        services_.windows().SetFocus(acting->second->Handle());
        isDone = !IsMinimised(frame);
        // The view cannot open an icon; the office can, and takes the keyboard.
        constexpr std::chrono::seconds kSoon{2};
        if (!isDone) loan_ = {owner, acting->first, view_link::Clock::now() + kSoon};
    });
    return isDone;
}

void RunningAddin::MoveAbove(std::int64_t owner) {
    for (const auto& [id, form] : services_.windows().forms()) {
        if (form->Owner() == 0 || form->HowShown() != platform::Shown::kModeless) continue;
        Suppressed([&, which = form] { which->SetOwner(owner); });
    }
}

void RunningAddin::ReturnKeyboard(const Model& model) {
    if (loan_.to == 0) return;
    const auto controller = model->getCurrentController();
    if (!controller.is() || calc::WindowHandle(controller->getFrame()) != loan_.to) return;
    const KeyboardLoan loan = std::exchange(loan_, {});
    const auto& forms = services_.windows().forms();
    const auto form = forms.find(loan.from);
    if (form == forms.end() || view_link::Clock::now() > loan.until) return;
    services_.windows().SetFocus(form->second->Handle());
    watch_.Update();
}

// The explorers of a document go with it, as if their user had closed them, and
// while the cells can still be given their fills back.
void RunningAddin::NoteClosing(const Model& model) {
    Suppressed([&] {
        const auto controller = model->getCurrentController();
        const auto frame = controller.is() ? controller->getFrame() : OfficeModal::Frame();
        const std::int64_t owner = calc::WindowHandle(frame);
        if (owner != 0)
            CloseWhere([owner](const platform::Form& form) { return form.Owner() == owner; });
        watch_.Update();
    });
}

// Later: a window that is about to get the keyboard is not taken it away meanwhile.
void RunningAddin::NoteChange() {
    if (!modal_.IsWaiting()) return;
    thread_.Post([weak = std::weak_ptr<char>(life_), this] {
        if (weak.lock() && !ends_) modal_.Look();
    });
}

bool RunningAddin::IsAnswered() {
    if (!modal_.IsWaiting()) return true;
    Suppressed([this] { modal_.WantAnswer(ActiveFrame()); });
    return false;
}

void RunningAddin::NoteClosed() {
    thread_.Post([weak = std::weak_ptr<char>(life_), this] {
        if (weak.lock() && !ends_) Suppressed([this] { CloseOrphans(); });
    });
}

// One of a document's windows may go while the document stays.
void RunningAddin::CloseOrphans() {
    std::set<std::int64_t> owners;
    for (const auto& frame : AllFrames(context_)) owners.insert(calc::WindowHandle(frame));
    CloseWhere([&owners](const platform::Form& form) {
        return form.Owner() != 0 && owners.count(form.Owner()) == 0;
    });
    watch_.Update();
}

void RunningAddin::CloseAll() {
    CloseWhere([](const platform::Form&) { return true; });
}

void RunningAddin::CloseWhere(const std::function<bool(const platform::Form&)>& closes) {
    std::vector<platform::WindowId> ids;
    for (const auto& [id, form] : services_.windows().forms()) {
        if (closes(*form)) ids.push_back(id);
    }
    // The newest first, as at the end; closing one may close others.
    for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
        const auto form = services_.windows().forms().find(*id);
        if (form == services_.windows().forms().end()) continue;
        form->second->onQueryClose = {};
        Suppressed([&form] { form->second->Unload(); });
    }
}

void RunningAddin::End() {
    if (std::exchange(ends_, true)) return;
    Suppressed([this] {
        if (isRunning_) {
            addin_.main().AutoClose();
            addin_.main().ShutDown();
        }
        isRunning_ = false;
        modal_.EndAll();
        if (bars_) bars_->Close();
        keys_.reset();
        link_.onLost = nullptr;
        link_.whyHeld = nullptr;
        link_.Stop();
        guard_.reset();
        application_.reset();
    });
}

}  // namespace korvane::desk
