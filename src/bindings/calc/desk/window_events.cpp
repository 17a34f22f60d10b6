#include "bindings/calc/desk/window_events.h"

#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>

#include "base/attempt.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;

namespace {

class Listener : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
public:
    Listener(host::ApplicationEvents& sink, WorkbookOf workbookOf)
        : sink_(&sink), workbookOf_(std::move(workbookOf)), focus_(ToOUString(u"OnFocus")) {}

    // The office may hold the listener for longer than the sink lives.
    void Forget() { sink_ = nullptr; }

    void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
        if (event.EventName != focus_) return;
        // The sink may let go of the subscription, and so of this object.
        const Reference<css::document::XDocumentEventListener> self(this);
        Suppressed([&] {
            const Reference<css::frame::XModel> model(event.Source, css::uno::UNO_QUERY);
            const auto workbook = model.is() && sink_ != nullptr ? workbookOf_(model) : nullptr;
            if (workbook && sink_ != nullptr) sink_->WindowActivate(workbook);
        });
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    host::ApplicationEvents* sink_;
    WorkbookOf workbookOf_;
    rtl::OUString focus_;
};

class Listening : public host::Subscription {
public:
    Listening(const Reference<css::document::XDocumentEventBroadcaster>& office,
              host::ApplicationEvents& sink, WorkbookOf workbookOf)
        : office_(office), listener_(new Listener(sink, std::move(workbookOf))) {
        office_->addDocumentEventListener(listener_.get());
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() override {
        listener_->Forget();
        Suppressed([this] { office_->removeDocumentEventListener(listener_.get()); });
    }

private:
    Reference<css::document::XDocumentEventBroadcaster> office_;
    rtl::Reference<Listener> listener_;
};

}  // namespace

host::SubscriptionPtr ConnectWindowEvents(const Reference<css::uno::XComponentContext>& context,
                                          host::ApplicationEvents& sink, WorkbookOf workbookOf) {
    return Translated([&]() -> host::SubscriptionPtr {
        const Reference<css::document::XDocumentEventBroadcaster> office(
            css::frame::theGlobalEventBroadcaster::get(context), css::uno::UNO_QUERY_THROW);
        return std::make_unique<Listening>(office, sink, std::move(workbookOf));
    });
}

}  // namespace korvane::calc
