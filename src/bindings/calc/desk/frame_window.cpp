#include "bindings/calc/desk/frame_window.h"

#include <com/sun/star/awt/SystemDependentXWindow.hpp>
#include <com/sun/star/awt/XSystemDependentWindowPeer.hpp>
#include <com/sun/star/lang/SystemDependent.hpp>

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

std::int64_t WindowHandle(const Reference<css::frame::XFrame>& frame) {
    if (!frame.is()) return 0;
    const Reference<css::awt::XSystemDependentWindowPeer> window(frame->getContainerWindow(),
                                                                 UNO_QUERY);
    if (!window.is()) return 0;
    // Within the office's own process the identifier of that process is not asked for.
    const css::uno::Any handle = window->getWindowHandle(
        css::uno::Sequence<sal_Int8>(16), css::lang::SystemDependent::SYSTEM_XWINDOW);
    css::awt::SystemDependentXWindow place;
    if (handle >>= place) return place.WindowHandle;
    sal_Int64 number = 0;
    handle >>= number;
    return number;
}

}  // namespace korvane::calc
