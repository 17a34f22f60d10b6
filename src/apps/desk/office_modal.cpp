#include "apps/desk/office_modal.h"

#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlModel.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>

#include "base/attempt.h"
#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"
#include "platform/window/host_waits.h"

namespace korvane::desk {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

// As small as the desktop allows: what the user sees is the view's.
constexpr sal_Int32 kSize = 1;

template <class T>
void Set(const Reference<css::beans::XPropertySet>& model, const char16_t* name, T value) {
    css::uno::Any any;
    any <<= value;
    model->setPropertyValue(ToOUString(name), any);
}

}  // namespace

bool OfficeModal::IsOver(const Wait& wait) const {
    return ends_ || !link_.HasView() || (*wait.done)();
}

Reference<css::awt::XDialog2> OfficeModal::MakeDialog() {
    const auto services = context_->getServiceManager();
    const Reference<css::awt::XControlModel> model(
        services->createInstanceWithContext(ToOUString(u"com.sun.star.awt.UnoControlDialogModel"),
                                            context_),
        UNO_QUERY_THROW);
    const Reference<css::beans::XPropertySet> properties(model, UNO_QUERY_THROW);
    // Without a frame of its own the dialog would end at once.
    Set(properties, u"Closeable", false);
    Set(properties, u"Moveable", false);
    Set(properties, u"Width", kSize);
    Set(properties, u"Height", kSize);
    Set(properties, u"Title", ToOUString(ToUtf16(platform::kHostWaits)));
    const Reference<css::awt::XControl> control(
        services->createInstanceWithContext(ToOUString(u"com.sun.star.awt.UnoControlDialog"),
                                            context_),
        UNO_QUERY_THROW);
    control->setModel(model);
    const Reference<css::awt::XWindow> window(control, UNO_QUERY_THROW);
    window->setVisible(false);
    const auto owner =
        asking_.is() ? asking_->getContainerWindow() : Reference<css::awt::XWindow>();
    const Reference<css::awt::XWindowPeer> parent(owner, UNO_QUERY);
    control->createPeer(
        Reference<css::awt::XToolkit>(css::awt::Toolkit::create(context_), UNO_QUERY_THROW),
        parent);
    // In the corner of the desktop, where a window manager puts what lies outside.
    if (owner.is()) {
        const auto place = owner->getPosSize();
        window->setPosSize(-place.Width, -place.Height, 0, 0, css::awt::PosSize::POS);
    }
    return Reference<css::awt::XDialog2>(control, UNO_QUERY_THROW);
}

// While it lives there is one wait more.
class OfficeModal::Waiting {
public:
    Waiting(OfficeModal& modal, const std::function<bool()>& done) : modal_(modal) {
        if (modal_.waits_.empty()) modal_.asking_ = modal_.frame_ ? modal_.frame_() : Frame();
        modal_.waits_.push_back({&done, modal_.MakeDialog()});
        if (modal_.waits_.size() == 1) modal_.blocked_.Begin(modal_.asking_);
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        modal_.waits_.pop_back();
        if (!modal_.waits_.empty()) return;
        modal_.blocked_.Release();
        modal_.asking_.clear();
    }

private:
    OfficeModal& modal_;
};

void OfficeModal::Run(const std::function<bool()>& done) {
    if (done()) return;
    if (!link_.EnsureView()) throw Error(kErrorApplication, u"The window cannot be shown");
    calc::Translated([&] {
        const Waiting waiting(*this, done);
        const auto dialog = waits_.back().dialog;
        // Whatever else ends the dialog (the Escape key), the wait is not over.
        while (!IsOver(waits_.back())) {
            watch_.Update();
            dialog->execute();
        }
        Reference<css::lang::XComponent>(dialog, UNO_QUERY_THROW)->dispose();
    });
    // The wait around this one may be over by the same event.
    Look();
}

void OfficeModal::WantAnswer(const Frame& tried) {
    if (waits_.empty()) return;
    Suppressed([&] { link_.Send(platform::AnswerWanted{calc::WindowHandle(tried)}); });
}

void OfficeModal::Look() {
    blocked_.Look();
    if (waits_.empty() || !IsOver(waits_.back())) return;
    // Before the view hears that its window is hidden: the desktop then gives the keyboard
    // to one of the office's, and one that is still disabled would not take note of it.
    if (waits_.size() == 1) blocked_.Release();
    waits_.back().dialog->endDialog(0);
}

void OfficeModal::EndAll() {
    ends_ = true;
    Look();
}

}  // namespace korvane::desk
