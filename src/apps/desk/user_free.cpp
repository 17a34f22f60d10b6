#include "apps/desk/user_free.h"

#include <algorithm>

#include "apps/desk/frames.h"
#include "bindings/calc/desk/user_business.h"

namespace korvane::desk {

namespace css = com::sun::star;
using css::uno::Reference;

std::u16string WhatIsToBeFinished(const Reference<css::uno::XComponentContext>& context,
                                  const Reference<css::frame::XFrame>& active) {
    // A formula is typed in one window, and what it refers to is pointed at in another.
    const auto frames = AllFrames(context);
    const bool isEditing = calc::IsEditing(context, active) ||
                           std::any_of(frames.begin(), frames.end(), [&](const auto& frame) {
                               return frame != active && calc::IsEditing(context, frame);
                           });
    if (isEditing) return u"Finish editing the cell first.";
    if (calc::IsAnswering(context)) return u"Close the open dialog first.";
    return {};
}

}  // namespace korvane::desk
