// Whether the office's user is in the middle of something.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::desk {

// What he has to do before anything is selected, evaluated or explored: his doing would
// be lost, or end in the wrong cell. Empty when he is free. `active` is the frame that he
// works in and may be null. Throws the office's exceptions.
std::u16string WhatIsToBeFinished(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& active);

}  // namespace korvane::desk
