// Reading formula texts character by character. Positions are 1-based UTF-16
// units; 0 means none.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvane {

// "+-*^/<>=&,%": they end a token. The argument separator is one of them. (A
// switch: searching a text for the character took twice as long.)
constexpr bool bIsOperator(char16_t ch) {
    switch (ch) {
        case u'+':
        case u'-':
        case u'*':
        case u'^':
        case u'/':
        case u'<':
        case u'>':
        case u'=':
        case u'&':
        case u',':
        case u'%': return true;
        default: return false;
    }
}

// Brackets, braces, blank and line feed: they never belong to a token, and end
// none ("A1 B1" is one token, "A1B1").
constexpr bool bIsFiller(char16_t ch) {
    switch (ch) {
        case u'(':
        case u')':
        case u'{':
        case u'}':
        case u' ':
        case u'\n': return true;
        default: return false;
    }
}

constexpr bool bIsQuote(char16_t ch) { return ch == u'"' || ch == u'\''; }

// Whether `s` is a text literal (its first character is a double quote) or a
// number.
bool bIsConstant(std::u16string_view s);

// The position of the quote that closes the one at `lPos`, or 0 when there is
// none. A doubled quote is passed over, unless its second one ends the text.
std::int32_t lClosingQuote(std::int32_t lPos, std::u16string_view s);

// lClosingQuote for callers that go on behind the quote: raises
// kErrorInvalidCall when there is none.
std::int32_t lPastQuote(std::int32_t lPos, std::u16string_view s);

// The position of the bracket that closes the "(" at `lPos`, or the length of
// `s` when it stays open. Quoted parts are passed over; raises
// kErrorInvalidCall when a quote stays open.
std::int32_t lClosingBracket(std::int32_t lPos, std::u16string_view s);

// The part of `s` behind its last ":", all of it when it has none.
std::u16string_view sAfterLastColon(std::u16string_view s);

// `s` without every character that occurs in `sChars`.
std::u16string sRemoveChars(std::u16string_view s, std::u16string_view sChars);

// The part of `s` behind its last "!", all of it when it has none.
std::u16string_view sStripSheet(std::u16string_view s);

// Whether the text has parts of its own: an operator or a bracket outside
// quotes, behind a leading "=". An error constant ("#DIV/0!") has none. Raises
// kErrorInvalidCall when a quote stays open.
bool bNeedsParse(std::u16string_view s);

// `s` as an expression for the host: with a "=" in front unless it has one.
std::u16string WithEquals(std::u16string_view s);

// Whether `sText` (with its "=") is one call of the function `sName`, given in
// capitals, and nothing behind it. Raises as lClosingBracket.
bool bIsCallOf(std::u16string_view sText, std::u16string_view sName);

// Whether the name before a "(" is opened as a part of its own even when
// functions are not shown: OFFSET, INDEX and INDIRECT lead to cells. It is a
// search for a tail, so that T( and SET( are opened too.
bool bIsReferenceFunction(std::u16string_view sToken);

}  // namespace korvane
