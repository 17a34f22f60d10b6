// Settings that are others for a while than those that are stored.
#pragma once

#include <map>
#include <string>

#include "platform/settings_store.h"

namespace korvane::window {

// Stands before a store. What is overridden here never reaches it.
class SettingsOverrides : public platform::SettingsStore {
public:
    // The store outlives the overrides.
    explicit SettingsOverrides(platform::SettingsStore& store) : store_(store) {}

    // The text of one of the add-in's own settings, until one is saved under the
    // key.
    void Override(const std::u16string& key, const std::u16string& text) { texts_[key] = text; }

    std::u16string Get(const std::u16string& application, const std::u16string& section,
                       const std::u16string& key, const std::u16string& defaultText) override;
    // Stores the text: it counts from then on.
    void Save(const std::u16string& application, const std::u16string& section,
              const std::u16string& key, const std::u16string& text) override;

private:
    platform::SettingsStore& store_;
    std::map<std::u16string, std::u16string> texts_;
};

}  // namespace korvane::window
