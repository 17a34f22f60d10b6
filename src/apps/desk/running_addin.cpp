#include "apps/desk/running_addin.h"

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XFrames.hpp>
#include <set>
#include <utility>
#include <vector>

#include "apps/desk/office_message.h"
#include "apps/desk/view_place.h"
#include "apps/office/own_file.h"
#include "base/attempt.h"
#include "base/text.h"
#include "bindings/calc/calc_sheets.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/desk/user_business.h"
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

// What the user is in the middle of would be lost, or end in the wrong cell.
bool RunningAddin::IsUserFree() {
    const bool isEditing = calc::IsEditing(context_, ActiveFrame());
    if (!isEditing && !calc::IsAnswering(context_)) return true;
    Suppressed([&] {
        services_.platform().messageBoxes.Show(
            {isEditing ? u"Finish editing the cell first." : u"Close the open dialog first.",
             platform::kProductName, platform::MessageIcon::kInformation,
             platform::MessageButtons::kOK});
    });
    return false;
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
    Suppressed([this] { addin_.state().hostWindow = application_->Hwnd(); });
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

void RunningAddin::NoteClosed() {
    thread_.Post([weak = std::weak_ptr<char>(life_), this] {
        if (weak.lock() && !ends_) Suppressed([this] { CloseOrphans(); });
    });
}

// One of a document's windows may go while the document stays.
void RunningAddin::CloseOrphans() {
    const auto frames = css::frame::Desktop::create(context_)->getFrames();
    std::set<std::int64_t> owners;
    for (sal_Int32 k = 0; k < frames->getCount(); ++k) {
        OfficeModal::Frame frame;
        frames->getByIndex(k) >>= frame;
        owners.insert(calc::WindowHandle(frame));
    }
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
        link_.Stop();
        guard_.reset();
        application_.reset();
    });
}

}  // namespace korvane::desk
