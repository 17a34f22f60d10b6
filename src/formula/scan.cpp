#include "formula/scan.h"

#include "base/error.h"
#include "base/number.h"
#include "base/text.h"
#include "formula/error_text.h"

namespace korvane {
namespace {

std::int32_t lLength(std::u16string_view s) { return static_cast<std::int32_t>(s.size()); }

char16_t At(std::u16string_view s, std::int32_t lPos) {
    return s[static_cast<std::size_t>(lPos) - 1];
}

}  // namespace

bool bIsConstant(std::u16string_view s) {
    if (s.empty()) return false;
    return s.front() == u'"' || IsNumeric(s);
}

std::int32_t lClosingQuote(std::int32_t lPos, std::u16string_view s) {
    const char16_t quote = At(s, lPos);
    auto from = static_cast<std::size_t>(lPos);  // the unit behind lPos, counted from 0
    for (;;) {
        const auto found = s.find(quote, from);
        if (found == std::u16string_view::npos) return 0;
        const auto j = static_cast<std::int32_t>(found) + 1;
        if (j < lLength(s) - 1 && At(s, j + 1) == quote) {
            from = found + 2;
            continue;
        }
        return j;
    }
}

std::int32_t lPastQuote(std::int32_t lPos, std::u16string_view s) {
    const std::int32_t closing = lClosingQuote(lPos, s);
    if (closing == 0) throw Error(kErrorInvalidCall, u"A quote is not closed");
    return closing;
}

std::int32_t lClosingBracket(std::int32_t lPos, std::u16string_view s) {
    std::int32_t depth = 0;
    for (std::int32_t i = lPos; i <= lLength(s); ++i) {
        const char16_t ch = At(s, i);
        if (ch == u'(') {
            ++depth;
        } else if (ch == u')') {
            if (--depth == 0) return i;
        } else if (bIsQuote(ch)) {
            i = lPastQuote(i, s);
        }
    }
    return lLength(s);
}

std::u16string_view sAfterLastColon(std::u16string_view s) { return AfterLast(s, u':'); }

std::u16string sRemoveChars(std::u16string_view s, std::u16string_view sChars) {
    std::u16string out;
    out.reserve(s.size());
    for (const char16_t ch : s) {
        if (sChars.find(ch) == std::u16string_view::npos) out += ch;
    }
    return out;
}

std::u16string_view sStripSheet(std::u16string_view s) { return AfterLast(s, u'!'); }

bool bNeedsParse(std::u16string_view s) {
    if (bIsErrorText(s)) return false;
    for (std::int32_t i = StartsWith(s, u"=") ? 2 : 1; i <= lLength(s); ++i) {
        const char16_t ch = At(s, i);
        if (bIsQuote(ch)) {
            i = lPastQuote(i, s);
        } else if (bIsOperator(ch) || ch == u'(') {
            return true;
        }
    }
    return false;
}

std::u16string WithEquals(std::u16string_view s) {
    std::u16string out;
    out.reserve(s.size() + 1);
    if (!StartsWith(s, u"=")) out += u'=';
    out += s;
    return out;
}

bool bIsCallOf(std::u16string_view sText, std::u16string_view sName) {
    const std::size_t bracket = sName.size() + 1;  // behind "=" and the name, from 0
    if (sText.size() <= bracket || sText.front() != u'=' || sText[bracket] != u'(' ||
        sText.substr(1, sName.size()) != sName) {
        return false;
    }
    return lClosingBracket(static_cast<std::int32_t>(bracket) + 1, sText) == lLength(sText);
}

bool bIsReferenceFunction(std::u16string_view sToken) {
    const std::u16string_view name = sAfterLastColon(sToken);
    const auto isTailOf = [&](std::u16string_view function) {
        return name.size() <= function.size() &&
               EqualIgnoringCase(name, function.substr(function.size() - name.size()));
    };
    return isTailOf(u"OFFSET") || isTailOf(u"INDEX") || isTailOf(u"INDIRECT");
}

}  // namespace korvane
