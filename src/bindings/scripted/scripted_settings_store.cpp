#include "bindings/scripted/scripted_settings_store.h"

#include "base/error.h"

namespace korvane::scripted {
namespace {

std::u16string Path(const SettingName& name) {
    return name.application + u"/" + name.section + u"/" + name.key;
}

}  // namespace

std::u16string ScriptedSettingsStore::Get(const std::u16string& application,
                                          const std::u16string& section, const std::u16string& key,
                                          const std::u16string& defaultText) {
    const SettingName name{application, section, key};
    try {
        accesses_->Enter("SettingsStore.Get", Path(name));
    } catch (const Error&) {
        return defaultText;  // a store that cannot be read holds nothing
    }
    const auto found = texts.find(name);
    return found == texts.end() ? defaultText : found->second;
}

void ScriptedSettingsStore::Save(const std::u16string& application, const std::u16string& section,
                                 const std::u16string& key, const std::u16string& text) {
    const SettingName name{application, section, key};
    accesses_->Enter("SettingsStore.Save", Path(name));
    texts[name] = text;
    writes.push_back({name, text});
}

}  // namespace korvane::scripted
