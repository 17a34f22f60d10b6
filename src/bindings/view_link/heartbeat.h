// Whether a view still answers.
#pragma once

#include <cstdint>

#include "bindings/view_link/limits.h"

namespace korvane::view_link {

// Counts how long an answer has been awaited, the view's introduction being the
// first. Only time counts during which somebody watched: when this process was
// busy or stopped itself, the answer may well have come, or the view may have
// been stopped along with it.
class Heartbeat {
public:
    Heartbeat(const LinkLimits& limits, Clock::time_point now);

    bool IsAwaiting() const { return awaiting_; }
    bool IsPingDue(Clock::time_point now) const;
    // The number that the next ping will have.
    std::int32_t next() const { return next_; }
    // A ping goes out; its number.
    std::int32_t Ping(Clock::time_point now);
    // The view introduced itself.
    void Introduce();
    // True when the view was asked this.
    bool Answer(std::int32_t number);
    // The view took something that it had not taken before.
    void Move() { waited_ = {}; }

    // To be called often while an answer is awaited; NextTimeout says how often.
    void Watch(Clock::time_point now);
    // `patience` times the usual time is over.
    bool IsOver(int patience) const { return waited_ >= patience * limit_; }
    // When Watch or IsPingDue have to be called next; 0 or more.
    Clock::duration NextTimeout(Clock::time_point now) const;

private:
    Clock::duration Slice() const { return limit_ / 4; }

    Clock::duration interval_;
    Clock::duration limit_;
    Clock::duration stallTime_;
    Clock::duration waited_{};
    Clock::time_point watched_;
    Clock::time_point pinged_;
    std::int32_t next_ = 1;
    bool awaiting_ = true;
};

}  // namespace korvane::view_link
