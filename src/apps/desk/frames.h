// The windows of the office that hold documents.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <vector>

namespace korvane::desk {

// All of them, of whatever program of the office, seen or not. Throws the office's
// exceptions.
std::vector<com::sun::star::uno::Reference<com::sun::star::frame::XFrame>> AllFrames(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

// The user has put it aside as an icon.
bool IsMinimised(const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

}  // namespace korvane::desk
