// Stands for the add-in in an office with windows: does what a test outside the
// office tells it by lines on a socket, on the office's main thread.
#include <sys/socket.h>
#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <string>
#include <thread>
#include <utility>

#include "bindings/calc/desk/protocol_handler.h"
#include "bindings/calc/uno_text.h"
#include "tested_addin.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using Context = Reference<css::uno::XComponentContext>;

constexpr int kSocket = 3;

// One line of the test's; the answer is one line too.
class Order : public cppu::WeakImplHelper1<css::awt::XCallback> {
public:
    Order(TestedAddin& addin, std::string line) : addin_(addin), line_(std::move(line)) {}
    void SAL_CALL notify(const css::uno::Any& /*data*/) override {
        std::string answer = addin_.Do(line_) + "\n";
        if (send(kSocket, answer.data(), answer.size(), MSG_NOSIGNAL) < 0) _exit(3);
    }

private:
    TestedAddin& addin_;
    std::string line_;
};

class Addin : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo>,
              public CommandTableHolder {
public:
    explicit Addin(const Context& context) : context_(context), addin_(context) {}

    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        std::thread([this] { Listen(); }).detach();
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
    void Listen() {
        std::string line;
        for (char ch = 0; recv(kSocket, &ch, 1, 0) == 1;) {
            if (ch != '\n') {
                line += ch;
                continue;
            }
            try {
                css::awt::AsyncCallback::create(context_)->addCallback(
                    new Order(addin_, std::exchange(line, {})), css::uno::Any());
            } catch (const css::uno::Exception&) {
                return;  // the office is ending: a new profile's first start does
            }
        }
        // The office lives no longer than the test.
        _exit(0);
    }

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
