// What a test leaves to chance, so that it can be repeated.
#pragma once

#include <chrono>
#include <cstdlib>
#include <random>
#include <string>

namespace korvane::test {

// The number in a variable of the environment; `otherwise` without one.
inline unsigned NumberIn(const char* variable, unsigned otherwise) {
    const char* const text = std::getenv(variable);
    return text != nullptr && *text != '\0' ? static_cast<unsigned>(std::stoul(text)) : otherwise;
}

class Chance {
public:
    // KORVANE_SEED, or always the same: what a change has broken is to be told from what
    // nobody has met yet. 0 stands for a seed of its own.
    Chance() : seed_(NumberIn("KORVANE_SEED", 1)) {
        if (seed_ == 0) seed_ = std::random_device{}() % 1'000'000 + 1;
        next_.seed(seed_);
    }

    // What a failure has to say: how it is had again.
    std::string Trace() const { return "again with KORVANE_SEED=" + std::to_string(seed_); }
    void Reseed(unsigned seed) {
        seed_ = seed;
        next_.seed(seed);
    }
    unsigned seed() const { return seed_; }
    // From 0 up to below `count`, which is at least 1.
    int Below(int count) { return static_cast<int>(next_() % static_cast<unsigned>(count)); }
    std::chrono::milliseconds Within(std::chrono::milliseconds span) {
        return std::chrono::milliseconds(Below(static_cast<int>(span.count()) + 1));
    }

private:
    unsigned seed_;
    std::mt19937 next_;  // the same numbers everywhere
};

}  // namespace korvane::test
