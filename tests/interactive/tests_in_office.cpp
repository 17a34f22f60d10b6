// The component that runs its tests inside an office with windows, and stands there
// for the add-in: its commands are the office's.
#include "tests_in_office.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "bindings/calc/desk/protocol_handler.h"
#include "bindings/calc/uno_text.h"
#include "support/office_orders.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::ToOUString;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using namespace std::chrono_literals;

namespace {

struct Office {
    Reference<css::uno::XComponentContext> context;
    std::shared_ptr<calc::CommandTable> commands = std::make_shared<calc::CommandTable>();
};

Office& TheOffice() {
    static Office office;
    return office;
}

// The office ends with its tests and as they do.
class RunTests : public cppu::WeakImplHelper1<css::awt::XCallback> {
public:
    explicit RunTests(const std::string& arguments) {
        std::istringstream words(arguments);
        for (std::string word; words >> word;) arguments_.push_back(word);
    }
    void SAL_CALL notify(const css::uno::Any& /*data*/) override {
        std::vector<char*> pointers;
        for (auto& argument : arguments_) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        int count = static_cast<int>(arguments_.size());
        testing::InitGoogleTest(&count, pointers.data());
        const int result = RUN_ALL_TESTS();
        std::fflush(nullptr);
        ::_exit(result);
    }

private:
    std::vector<std::string> arguments_{"tests"};
};

// The windows that the office begins with are there.
bool IsReady() {
    const auto frame = css::frame::Desktop::create(OfficeContext())->getCurrentFrame();
    return frame.is() && frame->getController().is();
}

std::string Carry(const std::string& order) {
    try {
        if (order == "ready") return IsReady() ? "yes" : "no";
        if (!order.starts_with("run")) return "what?";
        css::awt::AsyncCallback::create(OfficeContext())
            ->addCallback(new RunTests(order.substr(3)), css::uno::Any());
        return "started";
    } catch (const css::uno::Exception&) {
        return "failed";
    }
}

class Addin : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo>,
              public calc::CommandTableHolder {
public:
    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        CarryOutOrders(OfficeContext(), Carry);
        return {};
    }
    std::shared_ptr<calc::CommandTable> commands() override { return OfficeCommands(); }
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
};

}  // namespace

Reference<css::uno::XComponentContext> OfficeContext() { return TheOffice().context; }

std::shared_ptr<calc::CommandTable> OfficeCommands() { return TheOffice().commands; }

void LetOfficeWork() {
    Reference<css::awt::XToolkitExperimental>(css::awt::Toolkit::create(OfficeContext()),
                                              UNO_QUERY_THROW)
        ->processEventsToIdle();
}

bool LetOfficeWorkUntil(const std::function<bool()>& good, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        LetOfficeWork();
        if (good()) return true;
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(2ms);
    }
}

}  // namespace korvane::test

using com::sun::star::uno::Any;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::XComponentContext;
using com::sun::star::uno::XInterface;

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* korvane_tests(XComponentContext* context,
                                                          const Sequence<Any>& /*arguments*/) {
    korvane::test::TheOffice().context = context;
    auto* const addin = new korvane::test::Addin;
    addin->acquire();
    return static_cast<cppu::OWeakObject*>(addin);
}

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* korvane_tests_commands(
    XComponentContext* context, const Sequence<Any>& /*arguments*/) {
    const auto handler =
        korvane::calc::MakeProtocolHandler(context, korvane::calc::TableOfSingleton(context));
    handler->acquire();
    return handler.get();
}
