#include "apps/addin/product.h"

#include "base/text.h"

namespace korvane {
namespace {

// Paths are joined to it that begin with "/".
std::u16string Server(const char* configured) {
    std::u16string address = ToUtf16(configured);
    while (!address.empty() && address.back() == u'/') address.pop_back();
    return address;
}

}  // namespace

platform::ProductVersion Version() {
    return {KORVANE_VERSION_MAJOR, KORVANE_VERSION_MINOR, KORVANE_VERSION_PATCH};
}

platform::ProductLinks Links() {
    return {Server(KORVANE_UPDATE_SERVER), Server(KORVANE_WEB_SITE),
            ToUtf16(KORVANE_SUPPORT_ADDRESS)};
}

}  // namespace korvane
