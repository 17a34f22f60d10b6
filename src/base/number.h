// Numbers as texts, the same in every locale: "." is the decimal point.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvane {

// Whether `text` reads as a number: blanks around it, a sign, digits with an
// optional ".", an optional E exponent. "1E" and "." are none.
bool IsNumeric(std::u16string_view text);

// The number that `text` reads as, or nothing where IsNumeric is false. One too
// large for a double is infinite, one too small is 0.
std::optional<double> ParseNumber(std::u16string_view text);

// The number at the front of `text`, whatever follows it ("0.5W" is 0.5); blanks
// are passed over wherever they stand. 0 when the text begins with none.
double LeadingNumber(std::u16string_view text);

// At most 15 significant digits, in the form of printf's "%.15G" ("0.1",
// "1E+15", "1E-05"); negative zero is "0".
std::u16string NumberText(double number);

// `number` as a 32-bit whole number, halves to the even neighbour. Raises
// kErrorOverflow when it does not fit.
std::int32_t RoundToWhole(double number);

// The same of a text; raises kErrorTypeMismatch when it has no numeric reading.
std::int32_t TextToWhole(std::u16string_view text);

// "True" and "False" in any case, or a number (true unless 0). Raises
// kErrorTypeMismatch for any other text.
bool TextToBoolean(std::u16string_view text);

}  // namespace korvane
