// An open file that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace korvane::posix {

class Descriptor {
public:
    // Takes over `number`; a negative one is none.
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    void Close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

}  // namespace korvane::posix
