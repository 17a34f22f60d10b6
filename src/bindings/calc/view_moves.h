// Whether a view's selection may have changed since somebody looked.
#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <memory>

namespace korvane::calc {

class ViewMoves {
public:
    using Controller = com::sun::star::uno::Reference<com::sun::star::frame::XController>;

    ViewMoves();
    ~ViewMoves();
    ViewMoves(const ViewMoves&) = delete;
    ViewMoves& operator=(const ViewMoves&) = delete;

    // Counts from now on the moves in this view alone.
    void Follow(const Controller& controller);
    // There were moves since Follow or the last call, or the document's view is
    // another one by now.
    bool Take(const Controller& controller);

private:
    class Listener;
    void Leave();

    Controller followed_;
    std::shared_ptr<bool> moved_;  // the office holds on to it, too
    com::sun::star::uno::Reference<com::sun::star::uno::XInterface> listener_;
};

}  // namespace korvane::calc
