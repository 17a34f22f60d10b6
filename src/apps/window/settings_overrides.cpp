#include "apps/window/settings_overrides.h"

#include "settings/store_names.h"

namespace korvane::window {
namespace {

bool IsOurs(const std::u16string& application, const std::u16string& section) {
    return application == kApplication && section == kSection;
}

}  // namespace

std::u16string SettingsOverrides::Get(const std::u16string& application,
                                      const std::u16string& section, const std::u16string& key,
                                      const std::u16string& defaultText) {
    const auto found = IsOurs(application, section) ? texts_.find(key) : texts_.end();
    return found != texts_.end() ? found->second
                                 : store_.Get(application, section, key, defaultText);
}

void SettingsOverrides::Save(const std::u16string& application, const std::u16string& section,
                             const std::u16string& key, const std::u16string& text) {
    store_.Save(application, section, key, text);
    if (IsOurs(application, section)) texts_.erase(key);
}

}  // namespace korvane::window
