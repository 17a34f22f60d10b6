// What a view has sent and nobody has looked at yet.
#pragma once

#include <string>

#include "bindings/view_link/socket.h"
#include "platform/window/codec.h"

namespace korvane::view_link {

class Inbox {
public:
    // Whether Take has something to tell: a whole message, or that no more can
    // come out of these bytes.
    bool IsReady() const;
    // Reads some more. To be called when nothing is ready, so that no view can
    // make the inbox hold more than one message and what comes with it.
    Socket::Got ReadFrom(const Socket& socket);

    enum class Taken { kMessage, kNothing, kGarbage };
    // Takes the first message out.
    Taken Take(platform::FromView& message);

private:
    std::string bytes_;
    std::size_t taken_ = 0;  // of them
};

}  // namespace korvane::view_link
