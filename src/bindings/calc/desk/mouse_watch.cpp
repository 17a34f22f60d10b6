#include "bindings/calc/desk/mouse_watch.h"

#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/XEnhancedMouseClickHandler.hpp>
#include <com/sun/star/sheet/XEnhancedMouseClickBroadcaster.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/weakref.hxx>
#include <rtl/ref.hxx>

#include "base/attempt.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

using WeakController = css::uno::WeakReference<css::frame::XController>;

}  // namespace

class MouseWatch::Handler : public cppu::WeakImplHelper1<css::awt::XEnhancedMouseClickHandler> {
public:
    Handler(const MouseEvents::Controller& controller, std::shared_ptr<const MouseEvents> events)
        : controller_(controller), events_(std::move(events)) {}

    // True: the office is to do what it would do without us.
    sal_Bool SAL_CALL mousePressed(const css::awt::EnhancedMouseEvent& event) override {
        const MouseEvents::Controller controller(controller_);
        if (controller.is()) {
            events_->pressed(controller, (event.Buttons & css::awt::MouseButton::MIDDLE) != 0);
        }
        return true;
    }
    sal_Bool SAL_CALL mouseReleased(const css::awt::EnhancedMouseEvent& /*event*/) override {
        const MouseEvents::Controller controller(controller_);
        if (controller.is()) events_->released(controller);
        return true;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    WeakController controller_;
    std::shared_ptr<const MouseEvents> events_;
};

struct MouseWatch::Parts {
    WeakController controller;
    rtl::Reference<Handler> handler;
};

MouseWatch::MouseWatch(const MouseEvents::Controller& controller,
                       std::shared_ptr<const MouseEvents> events)
    : parts_(std::make_unique<Parts>()) {
    parts_->controller = controller;
    parts_->handler = new Handler(controller, std::move(events));
    Reference<css::sheet::XEnhancedMouseClickBroadcaster>(controller, UNO_QUERY_THROW)
        ->addEnhancedMouseClickHandler(parts_->handler.get());
}

MouseWatch::~MouseWatch() {
    Suppressed([this] {
        const Reference<css::sheet::XEnhancedMouseClickBroadcaster> controller(
            MouseEvents::Controller(parts_->controller), UNO_QUERY);
        if (controller.is()) controller->removeEnhancedMouseClickHandler(parts_->handler.get());
    });
}

bool MouseWatch::IsFor(const MouseEvents::Controller& controller) const {
    return MouseEvents::Controller(parts_->controller) == controller;
}

bool MouseWatch::IsOver() const { return !MouseEvents::Controller(parts_->controller).is(); }

}  // namespace korvane::calc
