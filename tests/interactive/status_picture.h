// What a window's status bar shows.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <string>

namespace korvane::test {

// A picture of it, to be compared with another: its texts can be asked of nobody.
std::string StatusPicture(
    const com::sun::star::uno::Reference<com::sun::star::frame::XFrame>& frame);

}  // namespace korvane::test
