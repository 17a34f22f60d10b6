#include "office_orders.h"

#include <sys/socket.h>
#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <memory>
#include <thread>
#include <utility>

#include "bindings/calc/uno_text.h"

namespace korvane::test {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using Carry = std::function<std::string(const std::string&)>;

constexpr int kSocket = 3;

class Order : public cppu::WeakImplHelper1<css::awt::XCallback> {
public:
    Order(std::shared_ptr<Carry> carry, std::string line)
        : carry_(std::move(carry)), line_(std::move(line)) {}
    void SAL_CALL notify(const css::uno::Any& /*data*/) override {
        const std::string answer = (*carry_)(line_) + "\n";
        if (::send(kSocket, answer.data(), answer.size(), MSG_NOSIGNAL) < 0) ::_exit(3);
    }

private:
    std::shared_ptr<Carry> carry_;
    std::string line_;
};

class OrderJob : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo> {
public:
    OrderJob(Reference<css::uno::XComponentContext> context, const char16_t* name, Carry carry)
        : context_(std::move(context)), name_(calc::ToOUString(name)), carry_(std::move(carry)) {}

    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        CarryOutOrders(context_, carry_);
        return {};
    }
    rtl::OUString SAL_CALL getImplementationName() override { return name_; }
    sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
        return cppu::supportsService(this, name);
    }
    css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
        return css::uno::Sequence<rtl::OUString>(&name_, 1);
    }

private:
    Reference<css::uno::XComponentContext> context_;
    rtl::OUString name_;
    Carry carry_;
};

}  // namespace

css::uno::XInterface* MakeOrderJob(const Reference<css::uno::XComponentContext>& context,
                                   const char16_t* name, Carry carry) {
    auto* const job = new OrderJob(context, name, std::move(carry));
    job->acquire();
    return static_cast<cppu::OWeakObject*>(job);
}

void CarryOutOrders(const css::uno::Reference<css::uno::XComponentContext>& context, Carry carry) {
    std::thread([context, carry = std::make_shared<Carry>(std::move(carry))] {
        std::string line;
        for (char ch = 0; ::recv(kSocket, &ch, 1, 0) == 1;) {
            if (ch != '\n') {
                line += ch;
                continue;
            }
            try {
                css::awt::AsyncCallback::create(context)->addCallback(
                    new Order(carry, std::exchange(line, {})), css::uno::Any());
            } catch (const css::uno::Exception&) {
                return;  // the office is ending
            }
        }
        ::_exit(0);
    }).detach();
}

}  // namespace korvane::test
