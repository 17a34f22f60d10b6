#include "bindings/view_link/send_queue.h"

#include "platform/window/codec.h"

namespace korvane::view_link {
namespace {

constexpr std::size_t kBlock = std::size_t{64} << 10;
constexpr std::size_t kMostAtOnce = std::size_t{1} << 20;  // about a millisecond

}  // namespace

bool SendQueue::Add(std::string_view message) {
    if (message.size() > platform::kLongestMessage) return true;
    constexpr std::size_t kHead = 4;
    if (size_ + message.size() + kHead > limit_) return false;
    if (blocks_.empty() || blocks_.back().size() >= kBlock) blocks_.emplace_back();
    std::string& block = blocks_.back();
    const std::size_t before = block.size();
    platform::AppendFrame(block, message);
    size_ += block.size() - before;
    return true;
}

void SendQueue::Clear() {
    blocks_.clear();
    sent_ = 0;
    size_ = 0;
}

SendQueue::Flow SendQueue::SendTo(const Socket& socket) {
    std::size_t total = 0;
    while (!empty() && total < kMostAtOnce) {
        const std::string_view rest = std::string_view(blocks_.front()).substr(sent_);
        const auto count = socket.Send(rest);
        if (!count) return Flow::kBroken;
        if (*count == 0) return Flow::kBlocked;
        total += *count;
        size_ -= *count;
        sent_ += *count;
        if (*count < rest.size()) continue;
        blocks_.pop_front();
        sent_ = 0;
    }
    return Flow::kFree;
}

}  // namespace korvane::view_link
