// A notice that the office itself shows, for what the view cannot.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::desk {

// Returns when the user has read it. Throws the office's exceptions.
void ShowOfficeMessage(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame,
    const std::u16string& text);

}  // namespace korvane::desk
