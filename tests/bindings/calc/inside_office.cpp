// Runs this component's tests inside the office process that loaded it, on its
// main thread: the binding can be tested nowhere else.
#include "inside_office.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase1.hxx>
#include <string>
#include <vector>

namespace css = com::sun::star;

namespace korvane::calc::testing {
namespace {
css::uno::Reference<css::uno::XComponentContext> officeContext;
}
css::uno::Reference<css::uno::XComponentContext> OfficeContext() { return officeContext; }
}  // namespace korvane::calc::testing

namespace {

constexpr int kSocket = 3;

void SendLine(std::string line) {
    line += '\n';
    if (send(kSocket, line.data(), line.size(), MSG_NOSIGNAL) < 0) _exit(3);
}

// One line: the arguments of the test program, separated by blanks.
std::vector<std::string> ReadArguments() {
    std::vector<std::string> arguments{"inside"};
    arguments.emplace_back();
    for (char ch = 0; recv(kSocket, &ch, 1, 0) == 1 && ch != '\n';) {
        if (ch == ' ') {
            arguments.emplace_back();
        } else {
            arguments.back() += ch;
        }
    }
    return arguments;
}

class RunTests : public cppu::WeakImplHelper1<css::awt::XCallback> {
public:
    void SAL_CALL notify(const css::uno::Any& /*data*/) override {
        SendLine(R"({"ok":true})");
        auto arguments = ReadArguments();
        std::vector<char*> pointers;
        for (auto& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        int count = static_cast<int>(arguments.size());
        testing::InitGoogleTest(&count, pointers.data());
        const int result = RUN_ALL_TESTS();
        std::fflush(nullptr);
        SendLine(std::to_string(result));
        _exit(result);
    }
};

class Job : public cppu::WeakImplHelper1<css::task::XJob> {
public:
    explicit Job(const css::uno::Reference<css::uno::XComponentContext>& context) {
        korvane::calc::testing::officeContext = context;
    }
    css::uno::Any SAL_CALL
    execute(const css::uno::Sequence<css::beans::NamedValue>& /*arguments*/) override {
        css::awt::AsyncCallback::create(korvane::calc::testing::officeContext)
            ->addCallback(new RunTests, css::uno::Any());
        return {};
    }
};

}  // namespace

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* korvane_office_job(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
    auto* const job = new Job(context);
    job->acquire();
    return static_cast<cppu::OWeakObject*>(job);
}
