#include "base/text.h"

#include <algorithm>
#include <cstdint>

namespace korvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

void AppendUtf16(std::u16string& out, char32_t code) {
    if (code < 0x10000) {
        out += static_cast<char16_t>(code);
    } else {
        out += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
        out += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    }
}

// Decodes the sequence at `at` and moves `at` behind it; a broken sequence
// yields U+FFFD and moves by one byte.
char32_t DecodeUtf8(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<std::uint8_t>(utf8[at]);
    int extra = -1;
    char32_t code = 0;
    char32_t least = 0;
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        extra = 1, code = lead & 0x1F, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        extra = 2, code = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        extra = 3, code = lead & 0x07, least = 0x10000;
    }
    if (extra < 0 || at + static_cast<std::size_t>(extra) >= utf8.size()) {
        ++at;
        return kReplacement;
    }
    for (int k = 1; k <= extra; ++k) {
        const auto next = static_cast<std::uint8_t>(utf8[at + static_cast<std::size_t>(k)]);
        if ((next & 0xC0) != 0x80) {
            ++at;
            return kReplacement;
        }
        code = (code << 6) | (next & 0x3F);
    }
    if (code < least || code > 0x10FFFF || IsHighSurrogate(code) || IsLowSurrogate(code)) {
        ++at;
        return kReplacement;
    }
    at += static_cast<std::size_t>(extra) + 1;
    return code;
}

bool EqualFolded(char16_t a, char16_t b) { return FoldChar(a) == FoldChar(b); }

}  // namespace

std::string ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t code = text[at];
        if (IsHighSurrogate(code) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++at] - 0xDC00U);
        } else if (IsHighSurrogate(code) || IsLowSurrogate(code)) {
            code = kReplacement;
        }
        AppendUtf8(out, code);
    }
    return out;
}

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) AppendUtf16(out, DecodeUtf8(utf8, at));
    return out;
}

std::u16string Fold(std::u16string_view text) {
    std::u16string out(text);
    std::transform(out.begin(), out.end(), out.begin(), FoldChar);
    return out;
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), EqualFolded);
}

bool ContainsIgnoringCase(std::u16string_view text, std::u16string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(), EqualFolded) !=
               text.end() ||
           part.empty();
}

std::u16string_view TrimBlanks(std::u16string_view text) {
    while (!text.empty() && text.front() == u' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
    return text;
}

std::u16string ReplaceAll(std::u16string text, std::u16string_view what, std::u16string_view with) {
    for (auto at = text.find(what); at != std::u16string::npos;
         at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

}  // namespace korvane
