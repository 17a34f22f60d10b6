#include "bindings/scripted/scripted_clock.h"

#include "bindings/scripted/civil_date.h"

namespace korvane::scripted {

platform::LocalTime ScriptedClock::Now() {
    accesses_->Note("Clock.Now");
    return now;
}

std::uint64_t ScriptedClock::Ticks() {
    accesses_->Note("Clock.Ticks");
    return ticks;
}

void ScriptedClock::Advance(int days) {
    const platform::LocalTime date{now.year, now.month, now.day};
    const CivilDate civil =
        CivilDateOf(static_cast<std::int64_t>(platform::DateSerial(date)) + days);
    now.year = static_cast<int>(civil.year);
    now.month = static_cast<int>(civil.month);
    now.day = static_cast<int>(civil.day);
}

}  // namespace korvane::scripted
