// Settings in memory.
#pragma once

#include <compare>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/settings_store.h"

namespace korvane::scripted {

// Where a setting is kept.
struct SettingName {
    std::u16string application;
    std::u16string section;
    std::u16string key;
    friend auto operator<=>(const SettingName&, const SettingName&) = default;
};

class ScriptedSettingsStore : public platform::SettingsStore {
public:
    explicit ScriptedSettingsStore(std::shared_ptr<Accesses> accesses)
        : accesses_(std::move(accesses)) {}

    // `defaultText`, and no error, where it is made to fail. Both are noted as
    // "SettingsStore.Get application/section/key".
    std::u16string Get(const std::u16string& application, const std::u16string& section,
                       const std::u16string& key, const std::u16string& defaultText) override;
    void Save(const std::u16string& application, const std::u16string& section,
              const std::u16string& key, const std::u16string& text) override;

    struct Write {
        SettingName name;
        std::u16string text;
    };

    std::map<SettingName, std::u16string> texts;
    std::vector<Write> writes;  // what Save stored, in order

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
