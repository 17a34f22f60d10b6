#include "apps/command/open_running.h"

#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "apps/command/open_profile.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;

// The texts of a file that ends each with a zero byte.
std::vector<std::string> ZeroEnded(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> texts;
    for (std::string text; std::getline(in, text, '\0');) texts.push_back(text);
    return texts;
}

// What stands behind `start` in the first text that begins with it.
std::string Behind(const std::vector<std::string>& texts, const std::string& start) {
    for (const std::string& text : texts) {
        if (text.starts_with(start)) return text.substr(start.size());
    }
    return {};
}

fs::path ProfileOf(const fs::path& program, const fs::path& process) {
    const fs::path named =
        PathOfUrl(Behind(ZeroEnded(process / "cmdline"), "-env:UserInstallation="));
    if (!named.empty()) return named;
    const auto environment = ZeroEnded(process / "environ");
    return UsualProfile(program, [&environment](std::string_view name) {
        return Behind(environment, std::string(name) + "=");
    });
}

bool HasAddin(const fs::path& process) {
    std::ifstream in(process / "maps");
    for (std::string line; std::getline(in, line);) {
        if (line.find("/libkorvane-office.so") != std::string::npos) return true;
    }
    return false;
}

// As the file system has it, without a slash at the end.
fs::path Resolved(const fs::path& path) {
    std::error_code failed;
    const fs::path whole = fs::weakly_canonical(path, failed);
    return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

std::optional<RunningOffice> FindRunning(const fs::path& program, const fs::path& profile,
                                         const fs::path& processes) {
    const fs::path wanted = Resolved(profile);
    std::error_code failed;
    for (fs::directory_iterator entry(processes, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string name = entry->path().filename();
        RunningOffice office;
        const auto [stop, error] =
            std::from_chars(name.data(), name.data() + name.size(), office.id);
        if (error != std::errc() || stop != name.data() + name.size()) continue;

        struct stat owner {};
        if (::stat(entry->path().c_str(), &owner) != 0 || owner.st_uid != ::getuid()) continue;
        std::error_code gone;
        const fs::path runs = fs::read_symlink(entry->path() / "exe", gone);
        if (gone || !runs.filename().string().starts_with("soffice.bin")) continue;
        if (Resolved(ProfileOf(program, entry->path())) != wanted) continue;
        office.hasAddin = HasAddin(entry->path());
        return office;
    }
    return std::nullopt;
}

}  // namespace korvane::command
