// Stands for the add-in in an office with windows: does what a test outside the
// office tells it by lines on a socket, on the office's main thread.
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <string>
#include <utility>

#include "bindings/calc/desk/protocol_handler.h"
#include "bindings/calc/uno_text.h"
#include "support/office_orders.h"
#include "tested_addin.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using Context = Reference<css::uno::XComponentContext>;

class Addin : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo>,
              public CommandTableHolder {
public:
    explicit Addin(const Context& context) : context_(context), addin_(context) {}

    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        test::CarryOutOrders(context_, [this](const std::string& line) { return addin_.Do(line); });
        return {};
    }

    std::shared_ptr<CommandTable> commands() override { return addin_.commands(); }

    rtl::OUString SAL_CALL getImplementationName() override {
        return ToOUString(u"org.korvane.office.Addin");
    }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        const rtl::OUString name = getImplementationName();
        return css::uno::Sequence<rtl::OUString>(&name, 1);
    }

private:
    Context context_;
    TestedAddin addin_;
};

}  // namespace
}  // namespace korvane::calc::testing

using com::sun::star::uno::Any;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XComponentContext;
using com::sun::star::uno::XInterface;

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* korvane_desk_addin(XComponentContext* context,
                                                               const Sequence<Any>& /*arguments*/) {
    auto* const addin = new korvane::calc::testing::Addin(context);
    addin->acquire();
    return static_cast<cppu::OWeakObject*>(addin);
}

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* korvane_desk_commands(
    XComponentContext* context, const Sequence<Any>& /*arguments*/) {
    const auto handler =
        korvane::calc::MakeProtocolHandler(context, korvane::calc::TableOfSingleton(context));
    handler->acquire();
    return handler.get();
}
