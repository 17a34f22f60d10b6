// A desktop of its own for a test: an X server without a screen and a window
// manager.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/child.h"

namespace korvane::test {

class Desktop {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    Desktop();
    // What a program needs to appear on it.
    std::vector<std::string> Environment() const;
    // Runs xdotool with these arguments; what it printed.
    std::string Do(const std::string& arguments) const;
    // Keeps a picture of the whole desktop in the build folder; its path.
    std::string Picture(const std::string& name) const;

private:
    std::string display_;
    std::unique_ptr<Child> server_;
    std::unique_ptr<Child> manager_;
};

}  // namespace korvane::test
