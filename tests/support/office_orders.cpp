#include "office_orders.h"

#include <sys/socket.h>
#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <memory>
#include <thread>
#include <utility>

namespace korvane::test {
namespace {

namespace css = com::sun::star;
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

}  // namespace

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
