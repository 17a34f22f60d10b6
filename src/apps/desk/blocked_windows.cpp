#include "apps/desk/blocked_windows.h"

#include <algorithm>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <com/sun/star/ui/XUIElement.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>
#include <utility>

#include "apps/desk/frames.h"
#include "base/attempt.h"
#include "bindings/calc/uno_text.h"

namespace korvane::desk {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

void Enable(const Reference<css::uno::XInterface>& what) {
    const Reference<css::awt::XWindow> window(what, UNO_QUERY);
    if (window.is()) window->setEnable(true);
}

// What was made within a window while that was disabled stays so on its own: a document
// that took the place of an empty one, a toolbar that came with it.
void EnableContents(const Reference<css::frame::XFrame>& frame) {
    Enable(frame->getComponentWindow());
    const Reference<css::beans::XPropertySet> properties(frame, UNO_QUERY);
    Reference<css::frame::XLayoutManager> layout;
    if (properties.is()) properties->getPropertyValue(ToOUString(u"LayoutManager")) >>= layout;
    if (!layout.is()) return;
    for (const auto& element : layout->getElements()) {
        if (element.is()) Enable(element->getRealInterface());
    }
}

}  // namespace

// Tells that the user went to a window.
class BlockedWindows::Watch : public cppu::WeakImplHelper1<css::awt::XTopWindowListener> {
public:
    explicit Watch(std::function<void()> onActivated) : onActivated_(std::move(onActivated)) {}

    void SAL_CALL windowActivated(const css::lang::EventObject& /*event*/) override {
        Suppressed(onActivated_);
    }
    void SAL_CALL windowOpened(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL windowClosing(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL windowClosed(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL windowMinimized(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL windowNormalized(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL windowDeactivated(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL disposing(const css::lang::EventObject& /*event*/) override {}

private:
    std::function<void()> onActivated_;
};

bool BlockedWindows::IsKnown(const Frame& frame) const {
    const auto window = frame->getContainerWindow();
    return std::any_of(blocked_.begin(), blocked_.end(),
                       [&](const Blocked& one) { return one.window == window; });
}

void BlockedWindows::Block(const Frame& frame, bool disables) {
    Blocked one;
    one.frame = frame;
    one.window = frame->getContainerWindow();
    const Reference<css::awt::XTopWindow> top(one.window, UNO_QUERY);
    const Reference<css::awt::XWindow2> state(one.window, UNO_QUERY);
    if (!top.is() || !state.is()) return;
    one.watch = new Watch([this, frame] {
        if (isOn_) onTried_(frame);
    });
    top->addTopWindowListener(one.watch);
    one.isDisabled = disables && state->isEnabled();
    blocked_.push_back(one);
    if (one.isDisabled) one.window->setEnable(false);
}

void BlockedWindows::Begin(const Frame& asking) {
    Suppressed([&] {
        if (std::exchange(isOn_, true)) return;
        if (asking.is()) Block(asking, false);
        LookForMore(true);
    });
}

void BlockedWindows::Look() {
    Suppressed([this] {
        if (isOn_) LookForMore(false);
    });
}

void BlockedWindows::LookForMore(bool isFirst) {
    Frame newest;
    for (const Frame& frame : AllFrames(context_)) {
        const Reference<css::awt::XWindow2> window(frame->getContainerWindow(), UNO_QUERY);
        // One whose document is still being loaded comes when that is there.
        if (!window.is() || !window->isVisible() || !frame->getController().is()) continue;
        if (IsKnown(frame)) continue;
        Block(frame, true);
        newest = frame;
    }
    if (newest.is() && !isFirst) onTried_(newest);
}

void BlockedWindows::Release() {
    isOn_ = false;
    for (const Blocked& one : std::exchange(blocked_, {})) {
        // Each by itself: a window that has gone is no reason to leave another one dead.
        Suppressed([&one] {
            Reference<css::awt::XTopWindow>(one.window, css::uno::UNO_QUERY_THROW)
                ->removeTopWindowListener(one.watch);
        });
        if (!one.isDisabled) continue;
        Suppressed([&one] { one.window->setEnable(true); });
        Suppressed([&one] { EnableContents(one.frame); });
    }
}

}  // namespace korvane::desk
