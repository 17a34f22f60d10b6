#include "bindings/calc/desk/key_text.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

namespace korvane::calc {

namespace css = com::sun::star;

std::optional<css::awt::KeyEvent> KeyOf(std::u16string_view text) {
    namespace Key = css::awt::Key;
    namespace KeyModifier = css::awt::KeyModifier;
    css::awt::KeyEvent key;
    for (; text.size() > 1; text.remove_prefix(1)) {
        sal_Int16 modifier = 0;
        switch (text.front()) {
            case u'^': modifier = KeyModifier::MOD1; break;
            case u'%': modifier = KeyModifier::MOD2; break;
            case u'+': modifier = KeyModifier::SHIFT; break;
            default: return std::nullopt;
        }
        if ((key.Modifiers & modifier) != 0) return std::nullopt;
        key.Modifiers = static_cast<sal_Int16>(key.Modifiers | modifier);
    }
    if (text.empty() || (key.Modifiers & (KeyModifier::MOD1 | KeyModifier::MOD2)) == 0) {
        return std::nullopt;
    }
    const auto from = [&](char16_t first, sal_Int16 code) {
        return static_cast<sal_Int16>(code + (text.front() - first));
    };
    const char16_t character = text.front();
    if (character >= u'a' && character <= u'z') {
        key.KeyCode = from(u'a', Key::A);
    } else if (character >= u'A' && character <= u'Z') {
        key.KeyCode = from(u'A', Key::A);
        key.Modifiers = static_cast<sal_Int16>(key.Modifiers | KeyModifier::SHIFT);
    } else if (character >= u'0' && character <= u'9') {
        key.KeyCode = from(u'0', Key::NUM0);
    } else {
        return std::nullopt;
    }
    return key;
}

}  // namespace korvane::calc
