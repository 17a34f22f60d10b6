#include "office_places.h"

#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/accessibility/XAccessibleTable.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XLayoutManager.hpp>
#include <functional>

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

using Element = Reference<css::accessibility::XAccessibleContext>;
using Table = Reference<css::accessibility::XAccessibleTable>;

// Depth first; the cells of a table are left out: there are too many.
Element Find(const Element& from, const std::function<bool(const Element&)>& good) {
    if (!from.is() || good(from)) return from;
    if (Table(from, UNO_QUERY).is()) return {};
    for (sal_Int32 k = 0; k < from->getAccessibleChildCount(); ++k) {
        const auto child = from->getAccessibleChild(k);
        if (!child.is()) continue;
        if (const auto found = Find(child->getAccessibleContext(), good); found.is()) return found;
    }
    return {};
}

Element FindNamed(const Element& from, const std::string& name) {
    const rtl::OUString wanted = ToOUString(ToUtf16(name));
    return Find(from,
                [&](const Element& element) { return element->getAccessibleName() == wanted; });
}

Element ContextOf(const Reference<css::uno::XInterface>& window) {
    return Reference<css::accessibility::XAccessible>(window, UNO_QUERY_THROW)
        ->getAccessibleContext();
}

Element Sheet(const OfficeContext& context) {
    return ContextOf(css::frame::Desktop::create(context)->getCurrentFrame()->getComponentWindow());
}

std::string PlaceOf(const Element& element) {
    const Reference<css::accessibility::XAccessibleComponent> component(element, UNO_QUERY);
    if (!component.is()) return "nowhere";
    const auto place = component->getLocationOnScreen();
    const auto size = component->getSize();
    if (size.Width <= 0) return "nowhere";
    return std::to_string(place.X) + " " + std::to_string(place.Y) + " " +
           std::to_string(size.Width) + " " + std::to_string(size.Height);
}

}  // namespace

std::string PlaceOfCell(const OfficeContext& context, const std::string& cell) {
    const Table table(
        Find(Sheet(context), [](const Element& element) { return Table(element, UNO_QUERY).is(); }),
        UNO_QUERY);
    const auto area = ParseArea(ToUtf16(cell));
    if (!table.is() || !area) return "nowhere";
    return PlaceOf(
        table->getAccessibleCellAt(area->top - 1, area->left - 1)->getAccessibleContext());
}

std::string PlaceOfTab(const OfficeContext& context, const std::string& sheet) {
    return PlaceOf(FindNamed(Sheet(context), sheet));
}

std::string PlaceOfButton(const OfficeContext& context, const std::string& name) {
    const Reference<css::beans::XPropertySet> frame(
        css::frame::Desktop::create(context)->getCurrentFrame(), UNO_QUERY_THROW);
    Reference<css::frame::XLayoutManager> layout;
    frame->getPropertyValue(ToOUString(u"LayoutManager")) >>= layout;
    const auto toolbar = layout->getElement(ToOUString(u"private:resource/toolbar/standardbar"));
    const Reference<css::accessibility::XAccessibleComponent> button(
        FindNamed(ContextOf(toolbar->getRealInterface()), name), UNO_QUERY);
    if (!button.is()) return "nowhere";
    const auto place = button->getLocationOnScreen();
    const auto size = button->getSize();
    if (size.Width <= 0) return "nowhere";
    return std::to_string(place.X + size.Width / 2) + " " +
           std::to_string(place.Y + size.Height / 2);
}

}  // namespace korvane::test
