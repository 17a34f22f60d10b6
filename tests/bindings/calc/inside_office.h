// What tests inside the office process start from.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

namespace korvane::calc::testing {

com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> OfficeContext();

}  // namespace korvane::calc::testing
