// Constants as formulas write them.
#pragma once

#include <optional>
#include <string_view>

#include "base/value.h"

namespace korvane {

// The value of a number, a text in double quotes (a doubled one inside stands
// for one), or TRUE or FALSE in any case; nothing for any other text.
std::optional<Value> LiteralValue(std::u16string_view text);

}  // namespace korvane
