#include "bindings/calc/desk/protocol_handler.h"

#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/implbase4.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "bindings/calc/main_thread.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;

namespace {

class ProtocolHandler
    : public cppu::WeakImplHelper4<css::frame::XDispatchProvider, css::frame::XDispatch,
                                   css::lang::XInitialization, css::lang::XServiceInfo> {
public:
    ProtocolHandler(const Reference<css::uno::XComponentContext>& context,
                    CommandTableSource source)
        : context_(context), source_(std::move(source)) {}

    // The frame; the commands ask for the active one when they run.
    void SAL_CALL initialize(const css::uno::Sequence<css::uno::Any>& /*arguments*/) override {}

    Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& url,
                                                            const rtl::OUString& /*frame*/,
                                                            sal_Int32 /*flags*/) override {
        try {
            if (IsCommandUrl(ToText(url.Complete))) return this;
        } catch (...) {
            // As if it were not ours.
        }
        return nullptr;
    }
    css::uno::Sequence<Reference<css::frame::XDispatch>> SAL_CALL
    queryDispatches(const css::uno::Sequence<css::frame::DispatchDescriptor>& requests) override {
        css::uno::Sequence<Reference<css::frame::XDispatch>> answers(requests.getLength());
        for (sal_Int32 k = 0; k < requests.getLength(); ++k) {
            const auto& request = requests[k];
            answers[k] = queryDispatch(request.FeatureURL, request.FrameName, request.SearchFlags);
        }
        return answers;
    }

    void SAL_CALL
    dispatch(const css::util::URL& url,
             const css::uno::Sequence<css::beans::PropertyValue>& /*arguments*/) override {
        try {
            MainThread(context_).Post([source = source_, command = ToText(url.Complete)] {
                if (const auto table = source()) table->Run(command);
            });
        } catch (...) {
            // The office is about to end: there is nothing left to run.
        }
    }

    // An entry is shown as enabled while there is something behind it.
    void SAL_CALL addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                    const css::util::URL& url) override {
        try {
            const auto table = source_();
            css::frame::FeatureStateEvent state;
            state.Source = static_cast<css::frame::XDispatch*>(this);
            state.FeatureURL = url;
            state.IsEnabled = table && table->Has(ToText(url.Complete));
            state.Requery = false;
            if (listener.is()) listener->statusChanged(state);
        } catch (...) {
            // A listener that fails has itself to blame.
        }
    }
    void SAL_CALL removeStatusListener(const Reference<css::frame::XStatusListener>& /*listener*/,
                                       const css::util::URL& /*url*/) override {}

    rtl::OUString SAL_CALL getImplementationName() override {
        return ToOUString(kProtocolHandlerName);
    }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        const rtl::OUString name = ToOUString(u"com.sun.star.frame.ProtocolHandler");
        return css::uno::Sequence<rtl::OUString>(&name, 1);
    }

private:
    Reference<css::uno::XComponentContext> context_;
    CommandTableSource source_;
};

}  // namespace

Reference<css::frame::XDispatchProvider> MakeProtocolHandler(
    const Reference<css::uno::XComponentContext>& context, CommandTableSource source) {
    return new ProtocolHandler(context, std::move(source));
}

CommandTableSource TableOfSingleton(const Reference<css::uno::XComponentContext>& context) {
    return [context]() -> std::shared_ptr<CommandTable> {
        Reference<css::uno::XInterface> singleton;
        context->getValueByName(ToOUString(kAddinSingleton)) >>= singleton;
        auto* const holder = dynamic_cast<CommandTableHolder*>(singleton.get());
        return holder != nullptr ? holder->commands() : nullptr;
    };
}

}  // namespace korvane::calc
