// The keys of one kind of the office's windows that run the add-in's commands.
#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/ui/XAcceleratorConfiguration.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <map>
#include <string>
#include <utility>

namespace korvane::calc {

// Binds keys in the running office only: nothing of it reaches the user's
// profile. Its end gives every key back.
class ModuleKeys {
public:
    // Throws korvane::Error when the office has no keys to bind.
    ModuleKeys(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        const char16_t* module);
    ~ModuleKeys();
    ModuleKeys(const ModuleKeys&) = delete;
    ModuleKeys& operator=(const ModuleKeys&) = delete;

    // Makes the key run one of the add-in's command URLs in every window of that kind, whatever it
    // did before. Throws korvane::Error for a key that cannot be bound; see
    // KeyOf for those that can.
    void Bind(const std::u16string& key, const std::u16string& url);
    // Makes the key do what it did before it was bound; one that is not bound, or
    // that somebody else has bound since, is left alone. Throws korvane::Error
    // for a text that is no key.
    void Release(const std::u16string& key);

private:
    // Key code and modifiers.
    using KeyName = std::pair<sal_Int16, sal_Int16>;
    using KeyTable = std::map<KeyName, rtl::OUString>;
    struct Bound {
        rtl::OUString url;
        rtl::OUString before;  // what the key did in the module; empty for nothing
    };
    using BoundKeys = std::map<KeyName, Bound>;

    rtl::OUString CommandOf(const KeyName& key) const;
    KeyTable Table() const;
    void Set(const KeyName& key, const rtl::OUString& url);
    void Remove(const KeyName& key);
    // Makes `wanted` what is bound, in the place of bound_.
    void Apply(BoundKeys wanted);

    com::sun::star::uno::Reference<com::sun::star::ui::XAcceleratorConfiguration> keys_;
    BoundKeys bound_;
    bool inProfile_ = false;  // the user has stored the keys while ours were bound
};

}  // namespace korvane::calc
