#include "bindings/calc/desk/command_brackets.h"

#include <algorithm>
#include <com/sun/star/frame/DispatchResultState.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDispatchProviderInterception.hpp>
#include <com/sun/star/frame/XDispatchProviderInterceptor.hpp>
#include <com/sun/star/frame/XInterceptorInfo.hpp>
#include <com/sun/star/frame/XNotifyingDispatch.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/weakref.hxx>
#include <rtl/ref.hxx>

#include "base/attempt.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

using Dispatch = Reference<css::frame::XDispatch>;
using Arguments = css::uno::Sequence<css::beans::PropertyValue>;
using WeakFrame = css::uno::WeakReference<css::frame::XFrame>;
using Brackets = std::shared_ptr<const CommandBrackets>;

CommandBrackets::Model ModelOf(const WeakFrame& weak) {
    const Reference<css::frame::XFrame> frame(weak);
    const auto controller =
        frame.is() ? frame->getController() : Reference<css::frame::XController>();
    return controller.is() ? controller->getModel() : CommandBrackets::Model();
}

// Calls `before` now and `after` at its end.
class Bracket {
public:
    Bracket(const Brackets& brackets, const WeakFrame& frame, std::u16string command)
        : brackets_(brackets), command_(std::move(command)) {
        Suppressed([&] {
            model_ = ModelOf(frame);
            if (model_.is()) brackets_->before(model_, command_);
        });
    }
    ~Bracket() {
        Suppressed([this] {
            if (model_.is()) brackets_->after(model_, command_);
        });
    }
    Bracket(const Bracket&) = delete;
    Bracket& operator=(const Bracket&) = delete;

private:
    Brackets brackets_;
    CommandBrackets::Model model_;
    std::u16string command_;
};

// The command as it is, with something around it.
class BracketedDispatch : public cppu::WeakImplHelper1<css::frame::XNotifyingDispatch> {
public:
    BracketedDispatch(Dispatch inner, WeakFrame frame, Brackets brackets)
        : inner_(std::move(inner)), frame_(std::move(frame)), brackets_(std::move(brackets)) {}

    void SAL_CALL dispatch(const css::util::URL& url, const Arguments& arguments) override {
        const Bracket bracket(brackets_, frame_, ToText(url.Complete));
        inner_->dispatch(url, arguments);
    }
    void SAL_CALL dispatchWithNotification(
        const css::util::URL& url, const Arguments& arguments,
        const Reference<css::frame::XDispatchResultListener>& listener) override {
        const Bracket bracket(brackets_, frame_, ToText(url.Complete));
        const Reference<css::frame::XNotifyingDispatch> notifying(inner_, UNO_QUERY);
        if (notifying.is()) return notifying->dispatchWithNotification(url, arguments, listener);
        inner_->dispatch(url, arguments);
        if (listener.is()) {
            listener->dispatchFinished({static_cast<cppu::OWeakObject*>(this),
                                        css::frame::DispatchResultState::DONTKNOW,
                                        css::uno::Any()});
        }
    }
    void SAL_CALL addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                    const css::util::URL& url) override {
        inner_->addStatusListener(listener, url);
    }
    void SAL_CALL removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                       const css::util::URL& url) override {
        inner_->removeStatusListener(listener, url);
    }

private:
    Dispatch inner_;
    WeakFrame frame_;
    Brackets brackets_;
};

}  // namespace

bool IsCommand(const std::u16string& asked, const std::u16string& command) {
    return asked == command || asked.starts_with(command + u"?");
}

class BracketedFrame::Interceptor
    : public cppu::WeakImplHelper2<css::frame::XDispatchProviderInterceptor,
                                   css::frame::XInterceptorInfo> {
public:
    Interceptor(const Frame& frame, Brackets brackets)
        : frame_(frame), brackets_(std::move(brackets)) {}

    Dispatch SAL_CALL queryDispatch(const css::util::URL& url, const rtl::OUString& target,
                                    sal_Int32 flags) override {
        const Reference<css::frame::XDispatchProvider> slave = slave_;
        Dispatch inner = slave.is() ? slave->queryDispatch(url, target, flags) : Dispatch();
        const std::u16string command = ToText(url.Complete);
        const auto& commands = brackets_->commands;
        const bool isMeant = std::any_of(commands.begin(), commands.end(),
                                         [&](const auto& one) { return IsCommand(command, one); });
        if (!isMeant || !inner.is()) return inner;
        return new BracketedDispatch(std::move(inner), frame_, brackets_);
    }
    css::uno::Sequence<Dispatch> SAL_CALL
    queryDispatches(const css::uno::Sequence<css::frame::DispatchDescriptor>& asked) override {
        css::uno::Sequence<Dispatch> all(asked.getLength());
        for (sal_Int32 k = 0; k < asked.getLength(); ++k) {
            all.getArray()[k] =
                queryDispatch(asked[k].FeatureURL, asked[k].FrameName, asked[k].SearchFlags);
        }
        return all;
    }
    Reference<css::frame::XDispatchProvider> SAL_CALL getSlaveDispatchProvider() override {
        return slave_;
    }
    void SAL_CALL
    setSlaveDispatchProvider(const Reference<css::frame::XDispatchProvider>& slave) override {
        slave_ = slave;
    }
    Reference<css::frame::XDispatchProvider> SAL_CALL getMasterDispatchProvider() override {
        return master_;
    }
    void SAL_CALL
    setMasterDispatchProvider(const Reference<css::frame::XDispatchProvider>& master) override {
        master_ = master;
    }
    // Only these are asked of the interceptor.
    css::uno::Sequence<rtl::OUString> SAL_CALL getInterceptedURLs() override {
        css::uno::Sequence<rtl::OUString> urls(
            static_cast<sal_Int32>(brackets_->commands.size() * 2));
        sal_Int32 at = 0;
        for (const auto& command : brackets_->commands) {
            urls.getArray()[at++] = ToOUString(command);
            urls.getArray()[at++] = ToOUString(command + u"?*");
        }
        return urls;
    }

private:
    WeakFrame frame_;
    Brackets brackets_;
    Reference<css::frame::XDispatchProvider> slave_;
    Reference<css::frame::XDispatchProvider> master_;
};

struct BracketedFrame::Parts {
    WeakFrame frame;
    rtl::Reference<Interceptor> interceptor;
};

BracketedFrame::BracketedFrame(const Frame& frame, std::shared_ptr<const CommandBrackets> brackets)
    : parts_(std::make_unique<Parts>()) {
    parts_->frame = frame;
    parts_->interceptor = new Interceptor(frame, std::move(brackets));
    Reference<css::frame::XDispatchProviderInterception>(frame, css::uno::UNO_QUERY_THROW)
        ->registerDispatchProviderInterceptor(parts_->interceptor.get());
}

BracketedFrame::~BracketedFrame() {
    Suppressed([this] {
        const Reference<css::frame::XDispatchProviderInterception> frame(Frame(parts_->frame),
                                                                         UNO_QUERY);
        if (frame.is()) frame->releaseDispatchProviderInterceptor(parts_->interceptor.get());
    });
}

bool BracketedFrame::IsFor(const Frame& frame) const { return Frame(parts_->frame) == frame; }

bool BracketedFrame::IsOver() const { return !Frame(parts_->frame).is(); }

}  // namespace korvane::calc
