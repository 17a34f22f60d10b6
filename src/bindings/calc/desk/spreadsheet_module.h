// What all of the office's spreadsheet windows have in common.
#pragma once

#include <com/sun/star/ui/XModuleUIConfigurationManager2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace korvane::calc {

inline constexpr const char16_t* kSpreadsheetModule = u"com.sun.star.sheet.SpreadsheetDocument";

// The menus, toolbars, pictures and keys of the spreadsheet windows. Throws the
// office's own exceptions.
com::sun::star::uno::Reference<com::sun::star::ui::XModuleUIConfigurationManager2>
SpreadsheetModule(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

}  // namespace korvane::calc
