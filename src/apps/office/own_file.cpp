#include "apps/office/own_file.h"

#include <dlfcn.h>

#include <string_view>

#include "base/text.h"

namespace korvane::office {

calc::AddinFile OwnFile() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&OwnFile), &info) == 0 || !info.dli_fname) return {};
    const std::string_view file = info.dli_fname;
    const auto slash = file.rfind('/');
    if (slash == std::string_view::npos) return {ToUtf16(file), u""};
    return {ToUtf16(file.substr(slash + 1)), ToUtf16(file.substr(0, slash))};
}

}  // namespace korvane::office
