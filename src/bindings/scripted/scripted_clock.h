// A clock that stands until a test moves it.
#pragma once

#include <cstdint>
#include <memory>

#include "bindings/scripted/accesses.h"
#include "platform/clock.h"

namespace korvane::scripted {

class ScriptedClock : public platform::Clock {
public:
    explicit ScriptedClock(std::shared_ptr<Accesses> accesses) : accesses_(std::move(accesses)) {}

    // Neither can be made to fail: a clock never does.
    platform::LocalTime Now() override;
    std::uint64_t Ticks() override;

    // Moves the date on by whole days, back by negative ones; the time of day
    // stays.
    void Advance(int days);

    platform::LocalTime now{2026, 11, 21, 10, 30, 0};
    std::uint64_t ticks = 1;

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
