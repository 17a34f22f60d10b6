#include "apps/command/private_folder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

#include "apps/command/document.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;

fs::path TemporaryFolder() {
    std::error_code failed;
    fs::path folder = fs::temp_directory_path(failed);  // honours TMPDIR
    return failed ? fs::path(P_tmpdir) : fs::absolute(folder);
}

}  // namespace

PrivateFolder::PrivateFolder() {
    std::string pattern = (TemporaryFolder() / "korvane-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw CommandError(kHostLost, "No temporary folder can be made in " +
                                          TemporaryFolder().string() + ": " + std::strerror(errno) +
                                          ". Set TMPDIR to another place.");
    }
    path_ = pattern;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;  // nothing is left to be done about it
    fs::remove_all(path_, ignored);
}

void PrivateFolder::Write(const fs::path& file, std::string_view content) const {
    const fs::path target = path_ / file;
    std::error_code failed;
    fs::create_directories(target.parent_path(), failed);
    std::ofstream out(target, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out) {
        throw CommandError(kHostLost, "The temporary file " + target.string() +
                                          " cannot be written. Is the disk full?");
    }
}

std::string FileUrl(const fs::path& path) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char ch : path.string()) {
        const auto byte = static_cast<unsigned char>(ch);
        const bool plain = (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                           (ch >= '0' && ch <= '9') || std::strchr("/-_.~", ch) != nullptr;
        if (plain && ch != '\0') {
            url += ch;
        } else {
            url += '%';
            url += kHex[byte >> 4];
            url += kHex[byte & 15];
        }
    }
    return url;
}

}  // namespace korvane::command
