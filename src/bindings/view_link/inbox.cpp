#include "bindings/view_link/inbox.h"

#include <string_view>
#include <utility>

namespace korvane::view_link {

using platform::FrameState;

bool Inbox::IsReady() const {
    std::string_view rest = std::string_view(bytes_).substr(taken_);
    std::string_view message;
    return platform::TakeFrame(rest, message) != FrameState::kUnfinished;
}

Socket::Got Inbox::ReadFrom(const Socket& socket) {
    constexpr std::size_t kMost = std::size_t{64} << 10;
    bytes_.erase(0, std::exchange(taken_, 0));
    return socket.Receive(bytes_, kMost);
}

Inbox::Taken Inbox::Take(platform::FromView& message) {
    const std::string_view all = std::string_view(bytes_).substr(taken_);
    std::string_view rest = all;
    std::string_view frame;
    switch (platform::TakeFrame(rest, frame)) {
        case FrameState::kUnfinished: return Taken::kNothing;
        case FrameState::kBroken: return Taken::kGarbage;
        case FrameState::kWhole: break;
    }
    taken_ += all.size() - rest.size();
    auto decoded = platform::DecodeFromView(frame);
    if (!decoded) return Taken::kGarbage;
    message = std::move(*decoded);
    return Taken::kMessage;
}

}  // namespace korvane::view_link
