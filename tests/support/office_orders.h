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

// The job of the office's start that does so, by the name of its implementation. The
// caller has the one reference to it, as the office wants it of a constructor.
com::sun::star::uno::XInterface* MakeOrderJob(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const char16_t* name, std::function<std::string(const std::string&)> carry);

}  // namespace korvane::test
