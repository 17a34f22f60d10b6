// Texts that a line of a file could break on.
#pragma once

#include <random>
#include <string>
#include <string_view>

namespace korvane::posix {

// Up to `most` UTF-16 units, many of them with a meaning in settings files, some
// half a surrogate pair.
inline std::u16string RandomText(std::mt19937& random, unsigned most) {
    using namespace std::string_view_literals;
    constexpr std::u16string_view kUnits =
        u"\\\\\\==[]];;##  "
        u"\t\n\r\0\u0001\u007F\u0085\u00A0\u2028\u2029\uFEFF\uFFFE\uFFFFunrtsx09aFé€\"'%"
        u"\U0001F600"sv;
    std::u16string text;
    for (auto count = random() % (most + 1); count > 0; --count) {
        const auto kind = random() % 12;
        if (kind == 0) {
            text += static_cast<char16_t>(0xD800 + random() % 0x800);
        } else if (kind == 1) {
            text += static_cast<char16_t>(random() % 0x10000);
        } else {
            text += kUnits[random() % kUnits.size()];
        }
    }
    return text;
}

}  // namespace korvane::posix
