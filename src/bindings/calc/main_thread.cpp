#include "bindings/calc/main_thread.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

class Posted : public cppu::WeakImplHelper1<css::awt::XCallback> {
public:
    explicit Posted(std::function<void()> run) : run_(std::move(run)) {}
    void SAL_CALL notify(const css::uno::Any& /*data*/) override {
        try {
            run_();
        } catch (...) {
            // An exception that left this place would end the office.
        }
    }

private:
    std::function<void()> run_;
};

}  // namespace

MainThread::MainThread(const css::uno::Reference<css::uno::XComponentContext>& context)
    : callbacks_(css::awt::AsyncCallback::create(context)) {}

void MainThread::Post(std::function<void()> run) const {
    callbacks_->addCallback(new Posted(std::move(run)), css::uno::Any());
}

}  // namespace korvane::calc
