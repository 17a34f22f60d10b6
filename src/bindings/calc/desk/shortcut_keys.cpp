#include "bindings/calc/desk/shortcut_keys.h"

#include "base/attempt.h"
#include "bindings/calc/desk/spreadsheet_module.h"

namespace korvane::calc {

ShortcutKeys::ShortcutKeys(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
    : sheets_(context, kSpreadsheetModule) {
    Suppressed([&] { charts_ = std::make_unique<ModuleKeys>(context, kChartModule); });
}

void ShortcutKeys::Bind(const std::u16string& key, const std::u16string& url) {
    sheets_.Bind(key, url);
    Suppressed([&] {
        if (charts_) charts_->Bind(key, url);
    });
}

void ShortcutKeys::Release(const std::u16string& key) {
    sheets_.Release(key);
    Suppressed([&] {
        if (charts_) charts_->Release(key);
    });
}

}  // namespace korvane::calc
