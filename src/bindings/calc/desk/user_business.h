// What the user is in the middle of, in the office's own windows.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace korvane::calc {

// A cell of the frame's document is being edited, or a text in a drawing. The
// office has no property for that: it is known by a command that only works in
// a text that is being edited. Throws the office's exceptions.
bool IsEditing(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

// A dialog of the office waits for an answer. Throws the office's exceptions.
bool IsAnswering(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

}  // namespace korvane::calc
