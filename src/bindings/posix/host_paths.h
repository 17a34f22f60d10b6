// Paths as the host writes them and as the system knows them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::posix {

// The folder as the host would write it: with "\" behind it. Empty for none.
std::u16string HostFolder(const std::filesystem::path& folder);

// Maps host paths. They separate by "\", also where a folder has come from the
// system itself ("/usr/lib/korvane\").
class HostPaths {
public:
    // Below these folders (absolute, or empty) a path is mapped exactly, also
    // where their own names hold a "\" or bytes that are no UTF-8.
    explicit HostPaths(std::vector<std::filesystem::path> known);

    // The native path, without "." and "..". Empty for a path that does not
    // begin at a root of this system: a relative one, or one with a drive.
    std::filesystem::path Native(const std::u16string& path) const;

private:
    struct Known {
        std::u16string host;
        std::filesystem::path native;
    };
    std::vector<Known> known_;
};

// Whether `path` is below `folder`; both absolute and without "..".
bool IsBelow(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace korvane::posix
