#include "bindings/posix/host_paths.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace korvane::posix {
namespace {

std::string WithSlashes(std::u16string_view path) {
    std::string native = ToUtf8(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace

std::u16string HostFolder(const std::filesystem::path& folder) {
    if (folder.empty()) return {};
    return ToUtf16(folder.native()) + u'\\';
}

HostPaths::HostPaths(std::vector<std::filesystem::path> known) {
    for (auto& folder : known) {
        if (!folder.empty()) known_.push_back({HostFolder(folder), std::move(folder)});
    }
}

std::filesystem::path HostPaths::Native(const std::u16string& path) const {
    // What follows a NUL would be lost without a word.
    if (path.find(u'\0') != std::u16string::npos) return {};
    for (const Known& known : known_) {
        if (!StartsWith(path, known.host)) continue;
        const auto rest = std::u16string_view(path).substr(known.host.size());
        return (known.native / ("./" + WithSlashes(rest))).lexically_normal();
    }
    const std::filesystem::path native = WithSlashes(path);
    return native.is_absolute() ? native.lexically_normal() : std::filesystem::path();
}

bool IsBelow(const std::filesystem::path& path, const std::filesystem::path& folder) {
    if (folder.empty()) return false;
    const auto base = (folder / "").lexically_normal().parent_path();
    const auto [end, at] = std::mismatch(base.begin(), base.end(), path.begin(), path.end());
    return end == base.end() && at != path.end();
}

}  // namespace korvane::posix
