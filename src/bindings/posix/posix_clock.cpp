#include "bindings/posix/posix_clock.h"

#include <unistd.h>

namespace korvane::posix {
namespace {

// Spreads each bit over all others, so that neither a late tick nor a near
// process number yields a near seed (the finalizer of splitmix64).
std::uint64_t Mix(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31U);
}

}  // namespace

platform::LocalTime LocalTimeOf(std::time_t moment) {
    ::tzset();  // the zone may have changed since the program started
    std::tm parts{};
    if (::localtime_r(&moment, &parts) == nullptr) return {};
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

platform::LocalTime PosixClock::Now() { return LocalTimeOf(std::time(nullptr)); }

std::uint64_t PosixClock::Ticks() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const auto ticks = static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U +
                       static_cast<std::uint64_t>(now.tv_nsec);
    return Mix(ticks ^ Mix(static_cast<std::uint64_t>(::getpid())));
}

}  // namespace korvane::posix
