// Lines on a socket that a test outside the office sends to a part of it inside.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <string>

namespace korvane::test {

// Each line on descriptor 3 is carried out on the office's main thread, between its
// events; what `carry` answers goes back as one line. The office lives no longer
// than the test: it ends without ceremony when the socket does.
void CarryOutOrders(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    std::function<std::string(const std::string&)> carry);

}  // namespace korvane::test
