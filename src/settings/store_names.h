// Where the per-user settings are kept in the platform's store.
#pragma once

namespace korvane {

inline constexpr const char16_t* kApplication = u"Korvane";
inline constexpr const char16_t* kSection = u"Korvane Explorer";

}  // namespace korvane
