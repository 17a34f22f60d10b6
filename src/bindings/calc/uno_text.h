// Texts between this system and the office.
#pragma once

#include <rtl/ustring.hxx>
#include <string>
#include <string_view>

namespace korvane::calc {

rtl::OUString ToOUString(std::u16string_view text);
std::u16string ToText(const rtl::OUString& text);

}  // namespace korvane::calc
