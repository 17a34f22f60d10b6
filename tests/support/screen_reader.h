// What a screen reader finds on a test's desktop.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/child.h"
#include "support/desktop.h"

namespace korvane::test {

// Has a bus of its own, so that the desktop that the tests run on hears nothing.
class ScreenReader {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    // The desktop outlives it.
    explicit ScreenReader(const Desktop& desktop);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    // What a program needs to be read.
    std::vector<std::string> Environment() const;
    // Its widgets and rows, a line for each; see screen_reader.py. `arguments` ask
    // for more than roles and names.
    std::string Read(const std::string& program, const std::string& arguments = {}) const;

private:
    const Desktop& desktop_;
    std::string socket_;
    std::unique_ptr<Child> bus_;
};

}  // namespace korvane::test
