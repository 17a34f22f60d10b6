#include "bindings/calc/r1c1.h"

#include "base/a1.h"
#include "base/number.h"

namespace korvane::calc {

namespace {

// What is left of the text, and what has been made of it so far.
struct Reading {
    std::u16string_view rest;
    std::u16string out;
    bool hasRelative = false;
    bool isOutside = false;
    bool isBroken = false;

    bool Take(char16_t sign) {
        const bool found = !rest.empty() && rest.front() == sign;
        if (found) rest.remove_prefix(1);
        return found;
    }
};

std::optional<std::int32_t> TakeNumber(Reading& reading) {
    std::int32_t number = 0;
    std::size_t length = 0;
    for (; length < reading.rest.size() && length < 8; ++length) {
        const char16_t ch = reading.rest[length];
        if (ch < u'0' || ch > u'9') break;
        number = number * 10 + (ch - u'0');
    }
    if (length == 0) return std::nullopt;
    reading.rest.remove_prefix(length);
    return number;
}

// "R", "R7" or "R[-7]", or the same of a column; false when it is none of them.
bool TakePart(Reading& reading, char16_t letter, std::int32_t from, std::int32_t most) {
    if (!reading.Take(letter) && !reading.Take(static_cast<char16_t>(letter + (u'a' - u'A'))))
        return false;
    std::int32_t number = from;
    if (reading.Take(u'[')) {
        const bool isBack = reading.Take(u'-');
        const auto distance = TakeNumber(reading);
        if (!distance || !reading.Take(u']')) {
            reading.isBroken = true;
            return false;
        }
        number += isBack ? -*distance : *distance;
        reading.hasRelative = true;
    } else if (const auto fixed = TakeNumber(reading)) {
        number = *fixed;
    } else {
        reading.hasRelative = true;
    }
    if (number < 1 || number > most) reading.isOutside = true;
    reading.out += letter + NumberText(number);
    return true;
}

bool TakeCorner(Reading& reading, std::int32_t row, std::int32_t column) {
    const bool hasRow = TakePart(reading, u'R', row, kSheetRows);
    const bool hasColumn = TakePart(reading, u'C', column, kSheetColumns);
    return hasRow || hasColumn;
}

}  // namespace

std::optional<std::u16string> WithoutRelative(std::u16string_view text, std::int32_t row,
                                              std::int32_t column) {
    const auto behindSheet = text.rfind(u'!') + 1;  // 0 when there is no sheet
    Reading reading{text.substr(behindSheet), std::u16string(text.substr(0, behindSheet))};
    if (!TakeCorner(reading, row, column)) return std::nullopt;
    if (reading.Take(u':')) {
        reading.out += u':';
        if (!TakeCorner(reading, row, column)) return std::nullopt;
    }
    if (reading.isBroken || !reading.rest.empty() || !reading.hasRelative) return std::nullopt;
    return reading.isOutside ? u"#REF!" : reading.out;
}

}  // namespace korvane::calc
