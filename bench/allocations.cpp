#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {
// The one thing that replacing operator new needs; the benchmarks run on one
// thread, so that counting costs them next to nothing.
std::int64_t count = 0;
}  // namespace

namespace korvane::bench {
std::int64_t Allocations() { return count; }
}  // namespace korvane::bench

void* operator new(std::size_t size) {
    ++count;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
