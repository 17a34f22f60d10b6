#include "bindings/calc/document_changes.h"

#include <com/sun/star/util/XModifyBroadcaster.hpp>
#include <com/sun/star/util/XModifyListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;

DocumentChanges::DocumentChanges(const Reference<css::frame::XModel>& model)
    : count_(std::make_shared<unsigned long>(0)) {
    class Listener : public cppu::WeakImplHelper1<css::util::XModifyListener> {
    public:
        explicit Listener(std::shared_ptr<unsigned long> count) : count_(std::move(count)) {}
        void SAL_CALL modified(const css::lang::EventObject& /*event*/) override { ++*count_; }
        void SAL_CALL disposing(const css::lang::EventObject& /*event*/) override {}

    private:
        std::shared_ptr<unsigned long> count_;
    };
    Reference<css::util::XModifyBroadcaster>(model, css::uno::UNO_QUERY_THROW)
        ->addModifyListener(new Listener(count_));
}

}  // namespace korvane::calc
