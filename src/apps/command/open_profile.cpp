#include "apps/command/open_profile.h"

#include <cstdlib>
#include <fstream>
#include <system_error>

#include "apps/command/office_files.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;

// What the extension brings; the office lists it among its services.
constexpr std::string_view kComponents = "/korvane.components";

int HexDigit(char ch) {
    if (ch >= '0' && ch <= '9') return ch - '0';
    if (ch >= 'a' && ch <= 'f') return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F') return ch - 'A' + 10;
    return -1;
}

bool Mentions(const fs::path& file, std::string_view text) {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        if (line.find(text) != std::string::npos) return true;
    }
    return false;
}

}  // namespace

Variables OwnVariables() {
    return [](std::string_view name) -> std::string {
        const char* const value = std::getenv(std::string(name).c_str());
        return value == nullptr ? std::string() : std::string(value);
    };
}

fs::path PathOfUrl(std::string_view url) {
    constexpr std::string_view kScheme = "file://";
    if (!url.starts_with(kScheme)) return {};
    url.remove_prefix(kScheme.size());
    if (url.starts_with("localhost/")) url.remove_prefix(9);
    std::string path;
    for (std::size_t k = 0; k < url.size(); ++k) {
        if (url[k] == '%' && k + 2 < url.size() && HexDigit(url[k + 1]) >= 0 &&
            HexDigit(url[k + 2]) >= 0) {
            path += static_cast<char>(HexDigit(url[k + 1]) * 16 + HexDigit(url[k + 2]));
            k += 2;
        } else {
            path += url[k];
        }
    }
    return path;
}

fs::path UsualProfile(const fs::path& program, const Variables& variables) {
    std::string text = variables("UserInstallation");
    if (text.empty()) text = StartupValue(program / "bootstraprc", "UserInstallation");
    if (const fs::path path = PathOfUrl(text); !path.empty()) return path;

    constexpr std::string_view kFolder = "$SYSUSERCONFIG";
    fs::path folder = variables("XDG_CONFIG_HOME");
    if (!folder.is_absolute()) folder = fs::path(variables("HOME")) / ".config";
    if (!text.starts_with(kFolder)) return folder / "libreoffice/4";
    text.erase(0, kFolder.size() + 1);
    return folder / text;
}

bool HasExtension(const fs::path& program, const fs::path& profile) {
    // The services of the extensions that are switched on.
    const fs::path list =
        "registry/com.sun.star.comp.deployment.component.PackageRegistryBackend/unorc";
    for (const char* const place :
         {"user/uno_packages/cache", "user/extensions/shared", "user/extensions/bundled"}) {
        if (Mentions(profile / place / list, kComponents)) return true;
    }
    // What was installed since this profile was last used is not in its lists, and
    // gets there while the office starts.
    for (const char* const place :
         {"../share/extensions", "../share/uno_packages/cache/uno_packages"}) {
        std::error_code failed;
        for (fs::recursive_directory_iterator
                 entry(program / place, fs::directory_options::skip_permission_denied, failed),
             end;
             !failed && entry != end; entry.increment(failed)) {
            if (entry.depth() > 1) entry.disable_recursion_pending();
            if (entry->path().filename() == kComponents.substr(1)) return true;
        }
    }
    return false;
}

}  // namespace korvane::command
