// A frame's window as the window system counts it.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <cstdint>

namespace korvane::calc {

// The number of the frame's window on an X display; 0 when there is no frame, or
// it is drawn elsewhere.
std::int64_t WindowHandle(
    const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

}  // namespace korvane::calc
