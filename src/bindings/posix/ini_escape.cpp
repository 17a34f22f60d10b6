#include "bindings/posix/ini_escape.h"

#include <optional>

#include "base/text.h"

namespace korvane::posix {
namespace {

constexpr std::u16string_view kMarks = u"=[];#";
// The letter behind the backslash, and what it stands for, at the same index.
constexpr std::u16string_view kLetters = u"\\nrts";
constexpr std::u16string_view kMeanings = u"\\\n\r\t ";

bool IsHigh(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// A surrogate without its other half, which UTF-8 cannot hold.
bool IsLone(std::u16string_view text, std::size_t at) {
    if (IsHigh(text[at])) return at + 1 == text.size() || !IsLow(text[at + 1]);
    return IsLow(text[at]) && (at == 0 || !IsHigh(text[at - 1]));
}

// Control characters, and those that an editor might take for a line break or
// lose when it saves the file.
bool IsUnsafe(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029 ||
           unit == 0xFEFF;
}

std::u16string UnitEscape(char16_t unit) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string escape = u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        escape += kDigits[(static_cast<unsigned>(unit) >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return escape;
}

std::string Escape(std::u16string_view text, std::u16string_view marks) {
    std::u16string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool inner = at > 0 && at + 1 < text.size();
        const auto letter = kMeanings.find(unit);
        if (letter != std::u16string_view::npos && !(unit == u' ' && inner)) {
            out += u'\\';
            out += kLetters[letter];
        } else if (marks.find(unit) != std::u16string_view::npos) {
            out += u'\\';
            out += unit;
        } else if (IsUnsafe(unit) || IsLone(text, at)) {
            out += UnitEscape(unit);
        } else {
            out += unit;
        }
    }
    return ToUtf8(out);
}

// The unit that four hexadecimal digits name.
std::optional<char16_t> HexUnit(std::u16string_view digits) {
    if (digits.size() != 4) return std::nullopt;
    unsigned unit = 0;
    for (const char16_t digit : digits) {
        const char16_t folded = FoldChar(digit);
        if (folded >= u'0' && folded <= u'9') {
            unit = unit * 16 + (folded - u'0');
        } else if (folded >= u'a' && folded <= u'f') {
            unit = unit * 16 + (folded - u'a') + 10;
        } else {
            return std::nullopt;
        }
    }
    return static_cast<char16_t>(unit);
}

// What the escape behind a backslash at `at` - 1 stands for; moves `at` behind
// it. Nothing, and `at` stays, when it is none.
std::optional<char16_t> ReadEscape(std::u16string_view text, std::size_t& at) {
    if (at == text.size()) return std::nullopt;
    if (text[at] == u'u') {
        const auto unit = HexUnit(text.substr(at + 1, 4));
        if (unit) at += 5;
        return unit;
    }
    if (const auto letter = kLetters.find(text[at]); letter != std::u16string_view::npos) {
        ++at;
        return kMeanings[letter];
    }
    if (kMarks.find(text[at]) != std::u16string_view::npos) return text[at++];
    return std::nullopt;
}

}  // namespace

std::string EscapeText(std::u16string_view text) { return Escape(text, u""); }

std::string EscapeName(std::u16string_view name) { return Escape(name, kMarks); }

std::u16string Unescape(std::string_view bytes) {
    const std::u16string text = ToUtf16(bytes);
    std::u16string out;
    for (std::size_t at = 0; at < text.size();) {
        const char16_t unit = text[at++];
        out += unit == u'\\' ? ReadEscape(text, at).value_or(unit) : unit;
    }
    return out;
}

std::size_t FindUnescaped(std::string_view bytes, char mark) {
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == mark) return at;
        if (bytes[at] == '\\') ++at;
    }
    return std::string_view::npos;
}

}  // namespace korvane::posix
