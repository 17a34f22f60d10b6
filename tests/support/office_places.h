// Where things of the active window are on the screen.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::test {

using OfficeContext = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;

// "left top width height" in pixels, or "nowhere".
std::string PlaceOfCell(const OfficeContext& context, const std::string& cell);  // "B3"
std::string PlaceOfTab(const OfficeContext& context, const std::string& sheet);
// "x y": the middle of a button of the standard toolbar.
std::string PlaceOfButton(const OfficeContext& context, const std::string& name);

}  // namespace korvane::test
