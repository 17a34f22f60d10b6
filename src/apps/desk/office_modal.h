// Waiting for the user within a call, inside a running Calc.
#pragma once

#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <vector>

#include "apps/desk/blocked_windows.h"
#include "apps/desk/link_watch.h"
#include "bindings/view_link/view_link.h"
#include "platform/modal.h"

namespace korvane::desk {

// The view shows the dialog; the office runs a tiny one of its own underneath,
// so that its windows go on painting and take no input meanwhile.
class OfficeModal : public platform::ModalLoop {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame>;

    // Both outlive the loop. `frame` gives the window that asks; it may be null.
    OfficeModal(Context context, view_link::ViewLink& link, LinkWatch& watch,
                std::function<Frame()> frame)
        : context_(context),
          link_(link),
          watch_(watch),
          frame_(std::move(frame)),
          blocked_(std::move(context), [this](const Frame& tried) { WantAnswer(tried); }) {}
    OfficeModal(const OfficeModal&) = delete;
    OfficeModal& operator=(const OfficeModal&) = delete;

    // Starts a view when there is none; ends when it is lost.
    void Run(const std::function<bool()>& done) override;

    // Looks whether the innermost wait is over, and whether there are further windows
    // to keep the user from: after everything that happened.
    void Look();
    // Brings what waits before the user's eyes, who tried to go on without answering it
    // in this window; null for no matter where.
    void WantAnswer(const Frame& tried);
    // Lets go of every wait.
    void EndAll();
    bool IsWaiting() const { return !waits_.empty(); }

private:
    struct Wait {
        const std::function<bool()>* done;
        com::sun::star::uno::Reference<com::sun::star::awt::XDialog2> dialog;
    };
    class Waiting;
    bool IsOver(const Wait& wait) const;
    com::sun::star::uno::Reference<com::sun::star::awt::XDialog2> MakeDialog();

    Context context_;
    view_link::ViewLink& link_;
    LinkWatch& watch_;
    std::function<Frame()> frame_;
    std::vector<Wait> waits_;  // the innermost last
    Frame asking_;             // what the outermost is modal to
    BlockedWindows blocked_;   // as long as there are any
    bool ends_ = false;
};

}  // namespace korvane::desk
