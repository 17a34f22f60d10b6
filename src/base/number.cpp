#include "base/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/error.h"
#include "base/text.h"

namespace korvane {
namespace {

bool IsBlank(char16_t ch) { return ch == u' ' || (ch >= u'\t' && ch <= u'\r'); }
bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

std::u16string_view WithoutBlanksAround(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// Steps over the digits at the front of `text` and says how many there were.
std::size_t SkipDigits(std::u16string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) ++count;
    text.remove_prefix(count);
    return count;
}

void SkipSign(std::u16string_view& text) {
    if (!text.empty() && (text.front() == u'+' || text.front() == u'-')) text.remove_prefix(1);
}

// How long the number at the front of `text` is; 0 when there is none. An E
// counts only with the digits of an exponent behind it.
std::size_t NumberLength(std::u16string_view text) {
    std::u16string_view rest = text;
    SkipSign(rest);
    std::size_t digits = SkipDigits(rest);
    if (!rest.empty() && rest.front() == u'.') {
        rest.remove_prefix(1);
        digits += SkipDigits(rest);
    }
    if (digits == 0) return 0;
    std::u16string_view exponent = rest;
    if (!exponent.empty() && FoldChar(exponent.front()) == u'e') {
        exponent.remove_prefix(1);
        SkipSign(exponent);
        if (SkipDigits(exponent) > 0) rest = exponent;
    }
    return text.size() - rest.size();
}

// What an unsigned number text outside a double's range stands for: from_chars
// does not say whether it was too large or too small, its first digit's place
// does.
double BeyondRange(const std::string& ascii) {
    const auto mark = std::min(ascii.find_first_of("eE"), ascii.size());
    const auto point = std::min(ascii.find('.'), mark);
    const auto first = ascii.find_first_of("123456789");
    constexpr long kFar = 1'000'000'000;  // beyond any exponent that counts
    long exponent = 0;
    if (mark < ascii.size()) {
        const bool down = ascii[mark + 1] == '-';
        for (const char ch : ascii.substr(mark + 1)) {
            if (ch >= '0' && ch <= '9') exponent = std::min(exponent * 10 + (ch - '0'), kFar);
        }
        if (down) exponent = -exponent;
    }
    const auto place = static_cast<long>(point) - static_cast<long>(first) + exponent;
    return place > 0 ? std::numeric_limits<double>::infinity() : 0;
}

}  // namespace

bool IsNumeric(std::u16string_view text) {
    if (text.empty() || text.front() > u'9') return false;  // no blank, sign, digit or "."
    text = WithoutBlanksAround(text);
    const std::size_t length = NumberLength(text);
    return length > 0 && length == text.size();
}

std::optional<double> ParseNumber(std::u16string_view text) {
    if (!IsNumeric(text)) return std::nullopt;
    text = WithoutBlanksAround(text);
    const bool negative = text.front() == u'-';
    SkipSign(text);
    const std::string ascii(text.begin(), text.end());
    double number = 0;
    const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        number = BeyondRange(ascii);
    }
    return negative ? -number : number;
}

double LeadingNumber(std::u16string_view text) {
    std::u16string dense(text);
    dense.erase(std::remove_if(dense.begin(), dense.end(), IsBlank), dense.end());
    dense.resize(NumberLength(dense));
    return ParseNumber(dense).value_or(0);
}

std::u16string NumberText(double number) {
    if (number == 0) return u"0";
    std::array<char, 40> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                      std::chars_format::general, 15);
    std::u16string text(buffer.data(), result.ptr);
    for (char16_t& ch : text) {
        if (ch >= u'a' && ch <= u'z') ch = static_cast<char16_t>(ch - (u'a' - u'A'));
    }
    return text;
}

std::int32_t RoundToWhole(double number) {
    // std::nearbyint rounds halves to even in the default rounding mode.
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<std::int32_t>::min() &&
          whole <= std::numeric_limits<std::int32_t>::max())) {
        throw Error(kErrorOverflow, u"Overflow");
    }
    return static_cast<std::int32_t>(whole);
}

std::int32_t TextToWhole(std::u16string_view text) {
    const auto number = ParseNumber(text);
    if (!number) throw Error(kErrorTypeMismatch, u"Type mismatch");
    return RoundToWhole(*number);
}

bool TextToBoolean(std::u16string_view text) {
    if (EqualIgnoringCase(text, u"True")) return true;
    if (EqualIgnoringCase(text, u"False")) return false;
    const auto number = ParseNumber(text);
    if (!number) throw Error(kErrorTypeMismatch, u"Type mismatch");
    return *number != 0;
}

}  // namespace korvane
