// The few things that the system does with files.
#pragma once

#include <string>

namespace korvane::platform {

// Paths come as the host writes them: folders end in "\" ("C:\Add-ins\"), and
// the file's name follows. Where the platform separates otherwise it maps them.
class Files {
public:
    virtual ~Files() = default;
    // Appends `line` and a line end, in UTF-8, to the file, which is created
    // when it does not exist. The line is written whole or not at all, also
    // beside other writers. Raises when it cannot be written.
    virtual void AppendLine(const std::u16string& path, const std::u16string& line) = 0;
    // Whether a file (no folder) stands at the path. False when that cannot be
    // found out.
    virtual bool Exists(const std::u16string& path) = 0;
    // The folder where the platform keeps a program's state for this user,
    // ending in "\": what is to be written before the add-in folder is known
    // goes there. May not exist yet; AppendLine makes it. Empty when the user has
    // no such place.
    virtual std::u16string StateFolder() = 0;
};

}  // namespace korvane::platform
