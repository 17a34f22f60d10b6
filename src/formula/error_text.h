// The host's values as the texts that the user reads.
#pragma once

#include <string>
#include <string_view>

#include "base/value.h"

namespace korvane {

namespace host {
class Application;
}

// `value` as text: an error's name ("#N/A"; "#ERROR!" for an unknown one), a
// Boolean as "True" or "False", a number as NumberText, a date as `application`
// writes it, a text as it is. A single cell stands for its value. What has no
// text (an array, a block of cells) gives the empty text. Raises when the host
// fails.
std::u16string sErrorText(const Value& value, host::Application& application);

// Whether `s` is exactly one of the eight error names.
bool bIsErrorText(std::u16string_view s);

}  // namespace korvane
