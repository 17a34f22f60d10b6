#include "bindings/calc/desk/user_business.h"

#include <com/sun/star/accessibility/AccessibleStateType.hpp>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <com/sun/star/util/URLTransformer.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "bindings/calc/desk/native_dialogs.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

// Inserts the sheet's name as a field into the text that is being edited.
constexpr const char16_t* kEditingCommand = u".uno:InsertFieldSheet";

class Status : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
public:
    void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& state) override {
        isEnabled = state.IsEnabled;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

    bool isEnabled = false;
};

bool IsModal(const Reference<css::awt::XTopWindow>& window) {
    const Reference<css::accessibility::XAccessible> described(window, UNO_QUERY);
    const auto context = described.is() ? described->getAccessibleContext()
                                        : Reference<css::accessibility::XAccessibleContext>();
    const auto states = context.is() ? context->getAccessibleStateSet()
                                     : Reference<css::accessibility::XAccessibleStateSet>();
    using namespace css::accessibility::AccessibleStateType;
    return states.is() && states->contains(MODAL) && states->contains(SHOWING);
}

}  // namespace

bool IsEditing(const Reference<css::uno::XComponentContext>& context,
               const Reference<css::frame::XFrame>& frame) {
    const Reference<css::frame::XDispatchProvider> commands(frame, UNO_QUERY);
    if (!commands.is()) return false;
    css::util::URL url;
    url.Complete = ToOUString(kEditingCommand);
    css::util::URLTransformer::create(context)->parseStrict(url);
    const auto dispatch = commands->queryDispatch(url, rtl::OUString(), 0);
    if (!dispatch.is()) return false;
    // The state is told within the call.
    const rtl::Reference<Status> status(new Status);
    dispatch->addStatusListener(status.get(), url);
    dispatch->removeStatusListener(status.get(), url);
    return status->isEnabled;
}

bool IsAnswering(const Reference<css::uno::XComponentContext>& context) {
    if (IsGtkDialogWaiting()) return true;
    const Reference<css::awt::XExtendedToolkit> toolkit(css::awt::Toolkit::create(context),
                                                        UNO_QUERY);
    if (!toolkit.is()) return false;
// Marked as deprecated, and nothing takes its place.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const sal_Int32 count = toolkit->getTopWindowCount();
    for (sal_Int32 k = 0; k < count; ++k) {
        if (IsModal(toolkit->getTopWindow(k))) return true;
    }
#pragma GCC diagnostic pop
    return false;
}

}  // namespace korvane::calc
