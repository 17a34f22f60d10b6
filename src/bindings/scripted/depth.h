// How many calls of a kind are under way.
#pragma once

namespace korvane::scripted {

// Counts one more for as long as it lives.
class Deeper {
public:
    explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
    ~Deeper() { --depth_; }

private:
    int& depth_;
};

}  // namespace korvane::scripted
