#include "apps/window/manual_folder.h"

#include <gtest/gtest.h>

#include "bindings/posix/temp_folder.h"

namespace korvane::window {
namespace {

namespace fs = std::filesystem;

class ManualFolderTest : public testing::Test {
protected:
    fs::path Make(const fs::path& folder) {
        fs::create_directories(temp_.path() / folder);
        return temp_.path() / folder;
    }
    fs::path MakeManual(const fs::path& folder) {
        posix::WriteBytes(Make(folder) / "index.html", "<html>");
        return temp_.path() / folder;
    }
    posix::TempFolder temp_;
};

TEST_F(ManualFolderTest, IsFoundWhereAnInstallationHasIt) {
    const auto manual = MakeManual("usr/share/doc/korvane/manual");
    EXPECT_EQ(ManualFolder(Make("usr/lib/korvane")), manual);
    EXPECT_EQ(ManualFolder(Make("usr/bin")), manual);
    EXPECT_EQ(ManualFolder(Make("usr/lib/a/b")), fs::path());
}

TEST_F(ManualFolderTest, TheAddinsOwnComesFirst) {
    MakeManual("usr/share/doc/korvane/manual");
    const auto own = MakeManual("usr/lib/korvane/manual");
    EXPECT_EQ(ManualFolder(temp_.path() / "usr/lib/korvane"), own);
}

TEST_F(ManualFolderTest, AFolderWithoutAStartPageIsNone) {
    const auto addin = Make("usr/lib/korvane");
    Make("usr/share/doc/korvane/manual");
    EXPECT_EQ(ManualFolder(addin), fs::path());
    EXPECT_EQ(ManualFolder(temp_.path() / "nowhere"), fs::path());
}

}  // namespace
}  // namespace korvane::window
