// What the running product is.
#pragma once

#include <cstdint>
#include <string>

namespace korvane::platform {

// Each part is 0 or more.
struct ProductVersion {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t revision = 0;
};

// Where the maker can be reached. Each may be empty: then there is no such place.
struct ProductLinks {
    std::u16string updateServer;    // of the version file, without "/" at its end
    std::u16string webSite;         // likewise
    std::u16string supportAddress;  // of mail
};

inline constexpr const char16_t* kProductName = u"Korvane Explorer";

}  // namespace korvane::platform
