// The mouse over the cells of a window.
#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <functional>
#include <memory>

namespace korvane::calc {

struct MouseEvents {
    using Controller = com::sun::star::uno::Reference<com::sun::star::frame::XController>;
    // A button is pressed, before the office does anything about it. None may throw.
    std::function<void(const Controller& controller, bool isMiddle)> pressed;
    // It came up again, before the office does anything about it. Not told of one that
    // ends a drag to another window or within the office's own drag and drop.
    std::function<void(const Controller& controller)> released;
};

// Listens while it lives.
class MouseWatch {
public:
    // Throws the office's exceptions.
    MouseWatch(const MouseEvents::Controller& controller,
               std::shared_ptr<const MouseEvents> events);
    ~MouseWatch();
    MouseWatch(const MouseWatch&) = delete;
    MouseWatch& operator=(const MouseWatch&) = delete;

    bool IsFor(const MouseEvents::Controller& controller) const;
    // The window is gone, or shows something else now.
    bool IsOver() const;

private:
    class Handler;
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace korvane::calc
