// What this build of the product is, and where its maker can be reached.
#pragma once

#include "platform/product.h"

namespace korvane {

platform::ProductVersion Version();

// As the build was configured (KORVANE_UPDATE_SERVER, KORVANE_WEB_SITE,
// KORVANE_SUPPORT_ADDRESS); a place that was not is empty.
platform::ProductLinks Links();

}  // namespace korvane
