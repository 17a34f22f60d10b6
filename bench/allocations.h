// Counts the allocations of the whole program.
#pragma once

#include <cstdint>

namespace korvane::bench {
std::int64_t Allocations();
}
