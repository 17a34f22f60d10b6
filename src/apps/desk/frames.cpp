#include "apps/desk/frames.h"

#include <com/sun/star/awt/XTopWindow2.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XFrames.hpp>

namespace korvane::desk {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

std::vector<Reference<css::frame::XFrame>> AllFrames(
    const Reference<css::uno::XComponentContext>& context) {
    const auto frames = css::frame::Desktop::create(context)->getFrames();
    std::vector<Reference<css::frame::XFrame>> all;
    for (sal_Int32 k = 0; k < frames->getCount(); ++k) {
        Reference<css::frame::XFrame> frame;
        if ((frames->getByIndex(k) >>= frame) && frame.is()) all.push_back(frame);
    }
    return all;
}

bool IsMinimised(const Reference<css::frame::XFrame>& frame) {
    const Reference<css::awt::XTopWindow2> window(frame->getContainerWindow(), UNO_QUERY);
    return window.is() && window->getIsMinimized();
}

}  // namespace korvane::desk
