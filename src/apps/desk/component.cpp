// What the office makes of this component in a running Calc: the job that starts
// the add-in, the singleton that holds it, and the handlers of its commands.
#include <com/sun/star/document/XDocumentEventListener.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/TerminationVetoException.hpp>
#include <com/sun/star/frame/XGlobalEventBroadcaster.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <cstdlib>
#include <memory>

#include "apps/desk/running_addin.h"
#include "bindings/calc/desk/protocol_handler.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/uno_text.h"

namespace korvane::desk {
namespace {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using Context = Reference<css::uno::XComponentContext>;

constexpr const char16_t* kHolderName = u"org.korvane.office.Addin";
constexpr const char16_t* kJobName = u"org.korvane.office.AddinJob";

// Tells the add-in of the windows and documents that come and go.
class DocumentEvents : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
public:
    explicit DocumentEvents(std::weak_ptr<RunningAddin> addin) : addin_(std::move(addin)) {}
    void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
        try {
            Tell(event);
        } catch (...) {
            // An exception that left this place would end the office.
        }
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    void Tell(const css::document::DocumentEvent& event) const {
        const auto addin = addin_.lock();
        if (addin) addin->NoteChange();
        const Reference<css::frame::XModel> model(event.Source, UNO_QUERY);
        const Reference<css::lang::XServiceInfo> info(event.Source, UNO_QUERY);
        if (!addin || !model.is() || !info.is()) return;
        if (!info->supportsService(ToOUString(calc::kSpreadsheetModule))) return;
        const std::u16string name = calc::ToText(event.EventName);
        if (name == u"OnFocus") addin->NoteWindow(model);
        if (name == u"OnUnload") addin->NoteClosing(model);
        if (name == u"OnViewClosed") addin->NoteClosed();
    }

    std::weak_ptr<RunningAddin> addin_;
};

class End : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
public:
    explicit End(std::weak_ptr<RunningAddin> addin) : addin_(std::move(addin)) {}
    void SAL_CALL queryTermination(const css::lang::EventObject& /*source*/) override {
        const auto addin = addin_.lock();
        if (addin && !addin->IsAnswered()) throw css::frame::TerminationVetoException();
    }
    void SAL_CALL notifyTermination(const css::lang::EventObject& /*source*/) override {
        if (const auto addin = addin_.lock()) addin->End();
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    std::weak_ptr<RunningAddin> addin_;
};

// The one object of this office that holds the add-in.
class Holder : public cppu::WeakImplHelper1<css::lang::XServiceInfo>,
               public calc::CommandTableHolder {
public:
    explicit Holder(Context context) : context_(std::move(context)) {}

    // Starts once; what the add-in lacks in this office is no failure of the office.
    void Start() {
        if (addin_) return;
        addin_ = std::make_shared<RunningAddin>(context_);
        css::frame::Desktop::create(context_)->addTerminateListener(new End(addin_));
        css::frame::theGlobalEventBroadcaster::get(context_)->addDocumentEventListener(
            new DocumentEvents(addin_));
    }
    std::shared_ptr<calc::CommandTable> commands() override {
        return addin_ ? addin_->commands() : nullptr;
    }

    rtl::OUString SAL_CALL getImplementationName() override { return ToOUString(kHolderName); }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        const rtl::OUString name = getImplementationName();
        return css::uno::Sequence<rtl::OUString>(&name, 1);
    }

private:
    Context context_;
    std::shared_ptr<RunningAddin> addin_;
};

class Job : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo> {
public:
    explicit Job(Context context) : context_(std::move(context)) {}

    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        // Nobody works in an office that the command line drives; an extension for
        // all users is in that one too.
        if (std::getenv("KORVANE_FOLDER") != nullptr) return {};
        try {
            const css::uno::Any held = context_->getValueByName(ToOUString(calc::kAddinSingleton));
            auto* const holder =
                dynamic_cast<Holder*>(Reference<css::uno::XInterface>(held, UNO_QUERY).get());
            if (holder != nullptr) holder->Start();
        } catch (...) {
            // The office goes on without the add-in.
        }
        return {};
    }

    rtl::OUString SAL_CALL getImplementationName() override { return ToOUString(kJobName); }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        const rtl::OUString name = getImplementationName();
        return css::uno::Sequence<rtl::OUString>(&name, 1);
    }

private:
    Context context_;
};

}  // namespace
}  // namespace korvane::desk

using com::sun::star::uno::Any;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XComponentContext;
using com::sun::star::uno::XInterface;

extern "C" {

SAL_DLLPUBLIC_EXPORT XInterface* korvane_office_addin(XComponentContext* context,
                                                      const Sequence<Any>& /*arguments*/) {
    auto* const holder = new korvane::desk::Holder(context);
    holder->acquire();
    return static_cast<cppu::OWeakObject*>(holder);
}

SAL_DLLPUBLIC_EXPORT XInterface* korvane_office_addin_job(XComponentContext* context,
                                                          const Sequence<Any>& /*arguments*/) {
    auto* const job = new korvane::desk::Job(context);
    job->acquire();
    return static_cast<cppu::OWeakObject*>(job);
}

SAL_DLLPUBLIC_EXPORT XInterface* korvane_office_commands(XComponentContext* context,
                                                         const Sequence<Any>& /*arguments*/) {
    const auto handler =
        korvane::calc::MakeProtocolHandler(context, korvane::calc::TableOfSingleton(context));
    handler->acquire();
    return handler.get();
}

}  // extern "C"
