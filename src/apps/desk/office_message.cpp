#include "apps/desk/office_message.h"

#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XMessageBoxFactory.hpp>

#include "bindings/calc/uno_text.h"
#include "platform/product.h"

namespace korvane::desk {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

void ShowOfficeMessage(const Reference<css::uno::XComponentContext>& context,
                       const Reference<css::frame::XFrame>& frame, const std::u16string& text) {
    const Reference<css::awt::XMessageBoxFactory> boxes(css::awt::Toolkit::create(context),
                                                        UNO_QUERY_THROW);
    const Reference<css::awt::XWindowPeer> parent(
        frame.is() ? frame->getContainerWindow() : Reference<css::awt::XWindow>(), UNO_QUERY);
    const auto box = boxes->createMessageBox(parent, css::awt::MessageBoxType_INFOBOX,
                                             css::awt::MessageBoxButtons::BUTTONS_OK,
                                             ToOUString(platform::kProductName), ToOUString(text));
    box->execute();
    Reference<css::lang::XComponent>(box, UNO_QUERY_THROW)->dispose();
}

}  // namespace korvane::desk
