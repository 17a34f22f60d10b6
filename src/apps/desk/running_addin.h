// The whole add-in in a running Calc: wired, started with the first spreadsheet,
// ended with the office.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

#include "apps/addin/addin.h"
#include "apps/desk/link_watch.h"
#include "apps/desk/office_modal.h"
#include "apps/window/services.h"
#include "bindings/calc/desk/calc_command_bars.h"
#include "bindings/calc/desk/command_table.h"
#include "bindings/calc/desk/desk_application.h"
#include "bindings/calc/desk/shortcut_keys.h"
#include "bindings/calc/desk/tint_guard.h"
#include "bindings/view_link/view_link.h"

namespace korvane::desk {

// All calls are made on the office's main thread; none throws unless it says so.
class RunningAddin {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;

    // Prepares everything; nothing is shown and no view runs yet. Throws when the
    // office lacks what is needed.
    explicit RunningAddin(const Context& context);
    ~RunningAddin();
    RunningAddin(const RunningAddin&) = delete;
    RunningAddin& operator=(const RunningAddin&) = delete;

    // What menus, keys and buttons run.
    std::shared_ptr<calc::CommandTable> commands() const { return commands_; }

    // A spreadsheet's window is there, or was activated.
    void NoteWindow(const Model& model);
    // A document closes: its windows go, and its cells get their fills back.
    void NoteClosing(const Model& model);
    // A window of a document's has closed.
    void NoteClosed();
    // Something has become of the office's windows.
    void NoteChange();
    // Nothing of ours waits for an answer; what does comes before the user's eyes, who
    // wants to go on or to end the office.
    bool IsAnswered();
    // The office ends.
    void End();

private:
    void Start();
    void Run(void (CMain::*command)());
    bool MayRun(Addin::Kind kind);
    bool HasView();
    bool IsUserFree();
    std::u16string WhyHeld();
    void CloseAll();
    void CloseOrphans();
    void CloseWhere(const std::function<bool(const platform::Form&)>& closes);
    void FollowActiveWindow();
    bool BringToFront(const OfficeModal::Frame& frame);
    void MoveAbove(std::int64_t owner);
    void ReturnKeyboard(const Model& model);
    OfficeModal::Frame ActiveFrame();

    // A window of the office's that was brought to the front for one of ours, in which
    // the user goes on.
    struct KeyboardLoan {
        std::int64_t to = 0;
        platform::WindowId from = 0;
        view_link::Clock::time_point until;
    };

    Context context_;
    calc::MainThread thread_;
    std::shared_ptr<calc::CommandTable> commands_;
    std::unique_ptr<calc::ShortcutKeys> keys_;
    std::shared_ptr<calc::CalcCommandBars> bars_;
    view_link::ViewLink link_;
    LinkWatch watch_;
    OfficeModal modal_;
    std::shared_ptr<calc::DeskApplication> application_;
    std::unique_ptr<calc::TintGuard> guard_;
    window::Services services_;
    Addin addin_;
    KeyboardLoan loan_;
    bool isStarting_ = false;
    bool isRunning_ = false;
    bool ends_ = false;
    std::shared_ptr<char> life_ = std::make_shared<char>();  // ends with the object
};

}  // namespace korvane::desk
