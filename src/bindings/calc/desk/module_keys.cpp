#include "bindings/calc/desk/module_keys.h"

#include <com/sun/star/container/NoSuchElementException.hpp>
#include <tuple>

#include "base/attempt.h"
#include "bindings/calc/desk/command_table.h"
#include "bindings/calc/desk/key_text.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::awt::KeyEvent;

namespace {

std::pair<sal_Int16, sal_Int16> RequiredKey(const std::u16string& text) {
    if (const auto key = KeyOf(text)) return {key->KeyCode, key->Modifiers};
    throw Error(kErrorApplication, u"The key \"" + text + u"\" cannot be bound");
}

KeyEvent EventOf(const std::pair<sal_Int16, sal_Int16>& key) {
    KeyEvent event;
    std::tie(event.KeyCode, event.Modifiers) = key;
    return event;
}

bool IsOurs(const rtl::OUString& url) { return IsCommandUrl(ToText(url)); }

}  // namespace

// The module's keys go before those of the whole office, among which Ctrl+Q is.
ModuleKeys::ModuleKeys(const css::uno::Reference<css::uno::XComponentContext>& context,
                       const char16_t* module)
    : keys_(Translated([&] {
          return css::uno::Reference<css::ui::XAcceleratorConfiguration>(
              ModuleOf(context, module)->getShortCutManager(), css::uno::UNO_QUERY_THROW);
      })) {}

ModuleKeys::~ModuleKeys() {
    Suppressed([this] { Apply({}); });
}

void ModuleKeys::Bind(const std::u16string& key, const std::u16string& url) {
    const KeyName name = RequiredKey(key);
    Translated([&] {
        const rtl::OUString command = ToOUString(url);
        const rtl::OUString now = CommandOf(name);
        BoundKeys wanted = bound_;
        const auto [bound, isNew] = wanted.try_emplace(name);
        if (!isNew && bound->second.url == command && now == command) return;
        bound->second.url = command;
        if (isNew && !IsOurs(now)) bound->second.before = now;
        Apply(std::move(wanted));
    });
}

void ModuleKeys::Release(const std::u16string& key) {
    BoundKeys wanted = bound_;
    if (wanted.erase(RequiredKey(key)) == 0) return;
    Translated([&] { Apply(std::move(wanted)); });
}

// Empty for a key that is not bound in the module.
rtl::OUString ModuleKeys::CommandOf(const KeyName& key) const {
    try {
        return keys_->getCommandByKeyEvent(EventOf(key));
    } catch (const css::container::NoSuchElementException&) {
        return {};
    }
}

ModuleKeys::KeyTable ModuleKeys::Table() const {
    KeyTable table;
    for (const KeyEvent& key : keys_->getAllKeyEvents()) {
        table[{key.KeyCode, key.Modifiers}] = keys_->getCommandByKeyEvent(key);
    }
    return table;
}

void ModuleKeys::Set(const KeyName& key, const rtl::OUString& url) {
    keys_->setKeyEvent(EventOf(key), url);
}

void ModuleKeys::Remove(const KeyName& key) { keys_->removeKeyEvent(EventOf(key)); }

// Each time from what is stored: the office does not find back by itself to the
// order of the keys of a command that has several, and the menus show the first.
// What others have changed without storing it is done again.
void ModuleKeys::Apply(BoundKeys wanted) {
    const KeyTable before = Table();
    keys_->reload();
    for (const auto& [key, url] : Table()) {
        if (IsOurs(url)) {
            inProfile_ = true;
            Remove(key);
        } else if (!before.contains(key) && !bound_.contains(key)) {
            Remove(key);
        }
    }
    for (const auto& [key, bound] : bound_) {
        if (!bound.before.isEmpty() && CommandOf(key).isEmpty()) Set(key, bound.before);
    }
    for (const auto& [key, url] : before) {
        if (!IsOurs(url) && CommandOf(key) != url) Set(key, url);
    }
    bound_ = std::move(wanted);
    if (inProfile_ && bound_.empty()) {
        keys_->store();
        inProfile_ = false;
    }
    for (const auto& [key, bound] : bound_) {
        if (!CommandOf(key).isEmpty()) Remove(key);
        Set(key, bound.url);
    }
}

}  // namespace korvane::calc
