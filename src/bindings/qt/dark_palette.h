// A dark desktop where there is none: to try and to test.
#pragma once

namespace korvane::qt {

// Light texts on dark, for the whole application.
void UseDarkPalette();

}  // namespace korvane::qt
