#include "desktop_fixture.h"

#include <cstdlib>

#include "support/desktop_office.h"

namespace korvane::test {

namespace fs = std::filesystem;

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

void DesktopTest::SetUp() {
    if (const std::string why = DesktopOffice::WhyNot(); !why.empty()) GTEST_SKIP() << why;
    std::string name = (fs::temp_directory_path() / "on-desktop-XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    folder_ = name;
    desktop_ = std::make_unique<Desktop>();
}

void DesktopTest::TearDown() {
    const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    if (HasFailure() && desktop_) desktop_->Picture(std::string("failed_") + test->name());
    EndPrograms();
    desktop_.reset();
    if (!folder_.empty()) fs::remove_all(folder_);
}

void DesktopTest::Press(const std::string& keys) const { desktop_->Do("key " + keys); }

std::string DesktopTest::ActiveWindow() const {
    return desktop_->Do("getactivewindow getwindowname 2>/dev/null");
}

}  // namespace korvane::test
