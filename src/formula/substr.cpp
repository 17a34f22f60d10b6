#include "formula/substr.h"

#include "formula/scan.h"

namespace korvane {

void SplitArguments(std::u16string_view sString, std::u16string_view sSeparators,
                    std::vector<CSubstr>& colParts, bool bKeepEmpty) {
    const auto length = static_cast<std::int32_t>(sString.size());
    const auto add = [&](std::int32_t start, std::int32_t end) {  // `end` is behind the last one
        colParts.push_back({std::u16string(sString.substr(static_cast<std::size_t>(start) - 1,
                                                          static_cast<std::size_t>(end - start))),
                            start});
    };
    std::int32_t start = 1;
    std::int32_t p = 1;
    while (p <= length) {
        const char16_t ch = sString[static_cast<std::size_t>(p) - 1];
        if (bIsQuote(ch)) {
            p = lPastQuote(p, sString);
        } else if (ch == u'(') {
            p = lClosingBracket(p, sString);
        } else if (sSeparators.find(ch) != std::u16string_view::npos) {
            if (bKeepEmpty || p > start) add(start, p);
            start = p + 1;
        }
        ++p;
    }
    if (p > start) add(start, p);
}

}  // namespace korvane
