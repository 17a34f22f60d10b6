// The component's one entry: the office starts this job when it comes up.
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <exception>

#include "apps/office/conversation.h"
#include "apps/office/quarantine.h"
#include "bindings/calc/uno_text.h"

namespace korvane::office {
namespace {

namespace css = com::sun::star;
using calc::ToOUString;

class Job : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo> {
public:
    explicit Job(const css::uno::Reference<css::uno::XComponentContext>& context)
        : context_(context) {}

    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        try {
            CutOffNetwork();
        } catch (const std::exception& error) {
            RefuseConversation(error.what());
        }
        try {
            StartConversation(context_);
        } catch (...) {
            // Without a conversation the starting program gives up by itself.
        }
        return {};
    }

    rtl::OUString SAL_CALL getImplementationName() override {
        return ToOUString(u"org.korvane.office.Job");
    }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        const rtl::OUString name = getImplementationName();
        return css::uno::Sequence<rtl::OUString>(&name, 1);
    }

private:
    css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace
}  // namespace korvane::office

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* korvane_office_job(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
    auto* const job = new korvane::office::Job(context);
    job->acquire();
    return static_cast<cppu::OWeakObject*>(job);
}
