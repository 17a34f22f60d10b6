// Key combinations as texts.
#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <optional>
#include <string_view>

namespace korvane::calc {

// The office's key for a text such as "^q" (Ctrl), "%q" (Alt), "^%q" (both) or
// "^+q" (with Shift, "+"): a letter, of which a capital means Shift too, or a
// digit. Nothing for any other text, and for a key without Ctrl or Alt: the user
// could type it no more.
std::optional<com::sun::star::awt::KeyEvent> KeyOf(std::u16string_view text);

}  // namespace korvane::calc
