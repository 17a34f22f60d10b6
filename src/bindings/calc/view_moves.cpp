#include "bindings/calc/view_moves.h"

#include <com/sun/star/view/XSelectionChangeListener.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

class ViewMoves::Listener : public cppu::WeakImplHelper1<css::view::XSelectionChangeListener> {
public:
    explicit Listener(std::shared_ptr<bool> moved) : moved_(std::move(moved)) {}
    void SAL_CALL selectionChanged(const css::lang::EventObject& /*event*/) override {
        *moved_ = true;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*event*/) override { *moved_ = true; }

private:
    std::shared_ptr<bool> moved_;
};

ViewMoves::ViewMoves() : moved_(std::make_shared<bool>(false)) {}

ViewMoves::~ViewMoves() { Leave(); }

void ViewMoves::Follow(const Controller& controller) {
    if (controller != followed_) {
        Leave();
        const Reference<css::view::XSelectionSupplier> supplier(controller, UNO_QUERY);
        if (supplier.is()) {
            const Reference<css::view::XSelectionChangeListener> listener(new Listener(moved_));
            supplier->addSelectionChangeListener(listener);
            listener_ = listener;
        }
        followed_ = controller;
    }
    *moved_ = false;
}

bool ViewMoves::Take(const Controller& controller) {
    return std::exchange(*moved_, false) || controller != followed_;
}

void ViewMoves::Leave() {
    try {
        const Reference<css::view::XSelectionSupplier> supplier(followed_, UNO_QUERY);
        const Reference<css::view::XSelectionChangeListener> listener(listener_, UNO_QUERY);
        if (supplier.is() && listener.is()) supplier->removeSelectionChangeListener(listener);
    } catch (const css::uno::Exception&) {
        // The view is gone, and its listeners with it.
    }
    followed_.clear();
    listener_.clear();
}

}  // namespace korvane::calc
