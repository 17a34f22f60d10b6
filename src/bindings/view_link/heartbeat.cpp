#include "bindings/view_link/heartbeat.h"

#include <algorithm>
#include <limits>

namespace korvane::view_link {

Heartbeat::Heartbeat(const LinkLimits& limits, Clock::time_point now)
    : interval_(limits.pingInterval),
      limit_(limits.startTime),
      stallTime_(limits.stallTime),
      watched_(now),
      pinged_(now) {}

bool Heartbeat::IsPingDue(Clock::time_point now) const {
    return !awaiting_ && now >= pinged_ + interval_;
}

std::int32_t Heartbeat::Ping(Clock::time_point now) {
    awaiting_ = true;
    waited_ = {};
    watched_ = now;
    pinged_ = now;
    const std::int32_t number = next_;
    next_ = number == std::numeric_limits<std::int32_t>::max() ? 1 : number + 1;
    return number;
}

void Heartbeat::Introduce() {
    if (next_ != 1) return;  // it introduced itself long ago
    awaiting_ = false;
    limit_ = stallTime_;
    waited_ = {};
}

bool Heartbeat::Answer(std::int32_t number) {
    const std::int32_t last = next_ == 1 ? std::numeric_limits<std::int32_t>::max() : next_ - 1;
    if (!awaiting_ || number != last) return false;
    awaiting_ = false;
    waited_ = {};
    return true;
}

void Heartbeat::Watch(Clock::time_point now) {
    if (awaiting_) waited_ += std::min(now - watched_, Slice());
    watched_ = now;
}

Clock::duration Heartbeat::NextTimeout(Clock::time_point now) const {
    const Clock::time_point next = awaiting_ ? watched_ + Slice() : pinged_ + interval_;
    return std::max(next - now, Clock::duration::zero());
}

}  // namespace korvane::view_link
