// What tests inside an office with windows start from.
#pragma once

#include <chrono>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

#include "bindings/calc/desk/command_table.h"

namespace korvane::test {

com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> OfficeContext();

// What the office's menus and keys run.
std::shared_ptr<calc::CommandTable> OfficeCommands();

// The tests run on the office's main thread, and so nothing else does: these let the
// office handle its events, until none is left or `good` holds. False when that
// takes too long.
void LetOfficeWork();
bool LetOfficeWorkUntil(const std::function<bool()>& good,
                        std::chrono::milliseconds patience = std::chrono::seconds(10));

}  // namespace korvane::test
