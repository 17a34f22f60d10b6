// The keys of Calc's windows that run the add-in's commands.
#pragma once

#include <memory>
#include <string>

#include "bindings/calc/desk/module_keys.h"

namespace korvane::calc {

// Binds keys in spreadsheets and in charts that are edited within them: there, too,
// a key must not do what it did before, such as end the office.
class ShortcutKeys {
public:
    // Throws korvane::Error when the office has no keys to bind.
    explicit ShortcutKeys(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

    // See ModuleKeys.
    void Bind(const std::u16string& key, const std::u16string& url);
    void Release(const std::u16string& key);

private:
    ModuleKeys sheets_;
    std::unique_ptr<ModuleKeys> charts_;  // null for an office without charts
};

}  // namespace korvane::calc
