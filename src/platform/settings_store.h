// Per-user settings: texts under an application, a section and a key.
#pragma once

#include <string>

namespace korvane::platform {

// Names are compared as they stand. Every text is kept exactly, line breaks and
// blanks at its ends included.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    // The stored text, or `defaultText` when there is none. A store that cannot
    // be read (a torn file, no permission) holds nothing; never raises for that.
    virtual std::u16string Get(const std::u16string& application, const std::u16string& section,
                               const std::u16string& key, const std::u16string& defaultText) = 0;
    // Stores the text for good before it returns. Raises when it cannot; the
    // store is then as before.
    virtual void Save(const std::u16string& application, const std::u16string& section,
                      const std::u16string& key, const std::u16string& text) = 0;
};

}  // namespace korvane::platform
