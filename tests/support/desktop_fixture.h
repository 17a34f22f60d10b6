// What tests on a desktop have in common.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "support/desktop.h"

namespace korvane::test {

bool Holds(const std::string& text, const std::string& part);

// Skipped where no office can be shown. A folder and a desktop of the test's own;
// a picture of the desktop is kept when the test fails.
class DesktopTest : public ::testing::Test {
protected:
    void SetUp() override;
    // Ends first what runs on the desktop.
    void TearDown() override;
    // Whoever runs on the desktop ends.
    virtual void EndPrograms() = 0;

    // Keys, as xdotool calls them.
    void Press(const std::string& keys) const;
    std::string ActiveWindow() const;

    std::filesystem::path folder_;
    std::unique_ptr<Desktop> desktop_;
};

}  // namespace korvane::test
