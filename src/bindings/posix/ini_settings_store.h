// Settings in files that a person can read, copy and keep under version control.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "bindings/posix/folders.h"
#include "platform/settings_store.h"

namespace korvane::posix {

// One file for each application, Korvane/<application>.ini in the folder for
// settings. Several processes may use it at once: each change is made under a
// lock (<application>.ini.lock) to what the file holds then, so none is lost. A
// process that is killed leaves the file as it was before or after the change.
// A link in the file's place is followed; the lock is beside its target.
//
// Every text is kept exactly, whatever UTF-16 units it holds; application names
// that differ in lone surrogates only share a file. Whatever a person adds to
// the file stays there (see ini_text.h).
class IniSettingsStore : public platform::SettingsStore {
public:
    // How long Save waits for other processes before it raises.
    static constexpr std::chrono::milliseconds kPatience{5'000};

    // Makes no file and no folder yet. Without a folder for settings nothing is
    // found, and Save raises.
    explicit IniSettingsStore(const Folders& folders,
                              std::chrono::milliseconds patience = kPatience);

    // Reads the file each time, so that what another process saved is seen.
    std::u16string Get(const std::u16string& application, const std::u16string& section,
                       const std::u16string& key, const std::u16string& defaultText) override;
    // Also raises when the file cannot be read (what it holds would be lost), or
    // is there and may not be written.
    void Save(const std::u16string& application, const std::u16string& section,
              const std::u16string& key, const std::u16string& text) override;

private:
    std::filesystem::path FileOf(const std::u16string& application) const;

    std::filesystem::path folder_;  // empty when there is none
    std::chrono::milliseconds patience_;
};

}  // namespace korvane::posix
