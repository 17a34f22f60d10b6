#include "bindings/calc/desk/spreadsheet_module.h"

#include <com/sun/star/ui/theModuleUIConfigurationManagerSupplier.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

css::uno::Reference<css::ui::XModuleUIConfigurationManager2> ModuleOf(
    const css::uno::Reference<css::uno::XComponentContext>& context, const char16_t* name) {
    return {
        css::ui::theModuleUIConfigurationManagerSupplier::get(context)->getUIConfigurationManager(
            ToOUString(name)),
        css::uno::UNO_QUERY_THROW};
}

css::uno::Reference<css::ui::XModuleUIConfigurationManager2> SpreadsheetModule(
    const css::uno::Reference<css::uno::XComponentContext>& context) {
    return ModuleOf(context, kSpreadsheetModule);
}

}  // namespace korvane::calc
