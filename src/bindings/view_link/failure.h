// The system's refusals, as the house's error.
#pragma once

#include <string_view>

#include "base/error.h"

namespace korvane::view_link {

// The error for `code`, a value of errno. Its description is `what` (UTF-8)
// followed by the system's own words.
Error SystemFailure(int code, std::string_view what);

}  // namespace korvane::view_link
