// Texts and names within the lines of an INI file (see ini_text.h).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvane::posix {

// UTF-8 without control characters and line breaks, without blanks at its ends.
std::string EscapeText(std::u16string_view text);
// The same, and no bare character of =[];# that would end or change a name.
std::string EscapeName(std::u16string_view name);

// The text that was escaped. Never fails: what is no escape stands for itself,
// what is no UTF-8 becomes U+FFFD.
std::u16string Unescape(std::string_view bytes);

// The first `mark` that no backslash precedes; npos when there is none.
std::size_t FindUnescaped(std::string_view bytes, char mark);

}  // namespace korvane::posix
