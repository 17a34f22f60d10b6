// What a view tells about its desktop.
#pragma once

#include "platform/window/link.h"

namespace korvane::view_link {

// Whether a desktop can be like this. Sizes that no desktop has would go into
// the windows' places.
bool IsSensible(const platform::ViewMetrics& metrics);

// What is assumed while no view has told: an ordinary desktop whose monitors are
// not known.
platform::ViewMetrics AssumedMetrics();

}  // namespace korvane::view_link
