#include "status_picture.h"

#include <com/sun/star/accessibility/AccessibleRole.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/accessibility/XAccessibleContext.hpp>
#include <cstdio>
#include <stdexcept>

#include "tests_in_office.h"

namespace korvane::test {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using Context = Reference<css::accessibility::XAccessibleContext>;

namespace {

// It stands right below the window.
Context StatusBarOf(const Context& window, int depth) {
    if (!window.is()) return {};
    if (window->getAccessibleRole() == css::accessibility::AccessibleRole::STATUS_BAR) {
        return window;
    }
    for (sal_Int32 k = 0; depth > 0 && k < window->getAccessibleChildCount(); ++k) {
        const auto child = window->getAccessibleChild(k);
        if (!child.is()) continue;
        if (auto found = StatusBarOf(child->getAccessibleContext(), depth - 1); found.is()) {
            return found;
        }
    }
    return {};
}

std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return output;
    char buffer[256];
    while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) output += buffer;
    ::pclose(pipe);
    return output;
}

}  // namespace

std::string StatusPicture(const Reference<css::frame::XFrame>& frame) {
    LetOfficeWork();
    const Reference<css::accessibility::XAccessible> window(frame->getContainerWindow(),
                                                            UNO_QUERY_THROW);
    const Context bar = StatusBarOf(window->getAccessibleContext(), 2);
    if (!bar.is()) throw std::runtime_error("The window has no status bar");
    const Reference<css::accessibility::XAccessibleComponent> component(bar, UNO_QUERY_THROW);
    const auto place = component->getLocationOnScreen();
    const auto size = component->getSize();
    return OutputOf("import -window root -crop " + std::to_string(size.Width) + "x" +
                    std::to_string(size.Height) + "+" + std::to_string(place.X) + "+" +
                    std::to_string(place.Y) + " -depth 8 rgb:- | md5sum");
}

}  // namespace korvane::test
