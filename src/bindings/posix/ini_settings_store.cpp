#include "bindings/posix/ini_settings_store.h"

#include <cerrno>
#include <optional>
#include <string_view>

#include "base/error.h"
#include "base/text.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/file_lock.h"
#include "bindings/posix/ini_text.h"
#include "bindings/posix/whole_file.h"

namespace korvane::posix {
namespace {

bool IsFileNameByte(char byte, bool first) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x20 || code == 0x7F || byte == '/' || byte == '%') return false;
    return byte != '.' || !first;
}

// A file name that no other application shares and that leads nowhere else:
// bytes that it must not have are written as %XX.
std::string FileName(const std::u16string& application) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string name;
    for (const char byte : ToUtf8(application)) {
        if (IsFileNameByte(byte, name.empty())) {
            name += byte;
        } else {
            const auto code = static_cast<unsigned char>(byte);
            name += {'%', kDigits[code >> 4U], kDigits[code & 0xFU]};
        }
    }
    return name + ".ini";
}

}  // namespace

IniSettingsStore::IniSettingsStore(const Folders& folders, std::chrono::milliseconds patience)
    : folder_(folders.config.empty() ? folders.config : folders.config / "Korvane"),
      patience_(patience) {}

std::filesystem::path IniSettingsStore::FileOf(const std::u16string& application) const {
    return folder_ / FileName(application);
}

std::u16string IniSettingsStore::Get(const std::u16string& application,
                                     const std::u16string& section, const std::u16string& key,
                                     const std::u16string& defaultText) {
    if (folder_.empty()) return defaultText;
    try {
        const auto bytes = ReadWhole(FileOf(application));
        return IniText(bytes.value_or("")).Find(section, key).value_or(defaultText);
    } catch (const Error&) {
        return defaultText;
    }
}

void IniSettingsStore::Save(const std::u16string& application, const std::u16string& section,
                            const std::u16string& key, const std::u16string& text) {
    if (folder_.empty()) throw SystemError(ENOENT, "The folder for settings");
    MakeFolders(folder_);
    const auto file = LinkTarget(FileOf(application));
    const FileLock lock(file.native() + ".lock", patience_);
    IniText ini(ReadWhole(file).value_or(""));
    if (ini.Set(section, key, text)) ReplaceWhole(file, ini.bytes());
    // Also for a text that was there already: whoever wrote it may have been
    // killed before it got here.
    SyncFolder(file.parent_path());
}

}  // namespace korvane::posix
