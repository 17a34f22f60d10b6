// What all of the office's spreadsheet windows have in common.
#pragma once

#include <com/sun/star/ui/XModuleUIConfigurationManager2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace korvane::calc {

inline constexpr const char16_t* kSpreadsheetModule = u"com.sun.star.sheet.SpreadsheetDocument";
// Charts that are edited within a document.
inline constexpr const char16_t* kChartModule = u"com.sun.star.chart2.ChartDocument";

// The menus, toolbars, pictures and keys of one kind of windows. Throws the office's
// own exceptions.
com::sun::star::uno::Reference<com::sun::star::ui::XModuleUIConfigurationManager2> ModuleOf(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const char16_t* name);

// Those of the spreadsheet windows.
com::sun::star::uno::Reference<com::sun::star::ui::XModuleUIConfigurationManager2>
SpreadsheetModule(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

}  // namespace korvane::calc
