#include "bindings/calc/uno_text.h"

#include <cstring>

namespace korvane::calc {

// The office's character type is another 16-bit type than char16_t outside its
// own code, so the characters are copied as bytes.
static_assert(sizeof(sal_Unicode) == sizeof(char16_t));

rtl::OUString ToOUString(std::u16string_view text) {
    rtl_uString* made = rtl_uString_alloc(static_cast<sal_Int32>(text.size()));
    if (!text.empty()) std::memcpy(made->buffer, text.data(), text.size() * sizeof(char16_t));
    return rtl::OUString(made, SAL_NO_ACQUIRE);
}

std::u16string ToText(const rtl::OUString& text) {
    std::u16string out(static_cast<std::size_t>(text.getLength()), u'\0');
    if (!out.empty()) std::memcpy(out.data(), text.getStr(), out.size() * sizeof(char16_t));
    return out;
}

}  // namespace korvane::calc
