// What the desktop does for a program: open things, start programs.
#pragma once

#include <cstdint>
#include <string>

namespace korvane::platform {

class Shell {
public:
    virtual ~Shell() = default;
    // Opens a web page or a mail address (http:, https: and mailto: only) with
    // the program that the user has chosen for it, over the window `owner` (0
    // for none). Returns at once; raises when the address is of another kind or
    // nothing could be started.
    virtual void Open(const std::u16string& address, std::int64_t owner) = 0;
    // Starts a program by its command line in a window that does not take the
    // focus. Returns at once; raises when it could not be started.
    virtual void Start(const std::u16string& commandLine) = 0;
};

}  // namespace korvane::platform
