// Texts as the hosts hold them: UTF-16, positions in 1-based UTF-16 units.
#pragma once

#include <string>
#include <string_view>

namespace korvane {

// UTF-16 to UTF-8 and back. Ill-formed input never fails: each lone surrogate
// or broken byte sequence becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
std::u16string ToUtf16(std::string_view utf8);

// A–Z to a–z, whatever the locale; every other character stays as it is.
constexpr char16_t FoldChar(char16_t ch) {
    return ch >= u'A' && ch <= u'Z' ? static_cast<char16_t>(ch + (u'a' - u'A')) : ch;
}
std::u16string Fold(std::u16string_view text);

// Equality and search that ignore the case of A–Z only.
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);
bool ContainsIgnoringCase(std::u16string_view text, std::u16string_view part);

// `text` without the blanks (U+0020 only) at both ends.
std::u16string_view TrimBlanks(std::u16string_view text);

// Every occurrence of `what` (not empty) in `text` replaced by `with`.
std::u16string ReplaceAll(std::u16string text, std::u16string_view what, std::u16string_view with);

inline bool StartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// The part of `text` behind the last `mark`; all of it when it has none.
inline std::u16string_view AfterLast(std::u16string_view text, char16_t mark) {
    const auto at = text.rfind(mark);
    return at == std::u16string_view::npos ? text : text.substr(at + 1);
}

}  // namespace korvane
