// Waiting for the user within a call.
#pragma once

#include <functional>

namespace korvane::platform {

class ModalLoop {
public:
    virtual ~ModalLoop() = default;
    // Delivers the user's events until `done` says so or no view is left that
    // could bring one; the caller looks at its own state afterwards. `done` is
    // asked first and after every event. Handlers of the system's windows run
    // within the call. Raises when events cannot be waited for here.
    virtual void Run(const std::function<bool()>& done) = 0;
};

}  // namespace korvane::platform
