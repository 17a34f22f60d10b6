#include "apps/command/open_profile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>

namespace korvane::command {
namespace {

namespace fs = std::filesystem;

class OpenProfileTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "korvane-profile-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        program = folder / "office/program";
        profile = folder / "profile";
        fs::create_directories(program);
    }
    void TearDown() override { fs::remove_all(folder); }

    void Write(const fs::path& path, const std::string& text) {
        fs::create_directories((folder / path).parent_path());
        std::ofstream(folder / path) << text;
    }
    fs::path Usual(std::map<std::string, std::string> variables) {
        return UsualProfile(program,
                            [&](std::string_view name) { return variables[std::string(name)]; });
    }

    fs::path folder, program, profile;
};

TEST_F(OpenProfileTest, IsWhereTheOfficeSays) {
    EXPECT_EQ(Usual({{"HOME", "/home/a"}}), "/home/a/.config/libreoffice/4");
    Write("office/program/bootstraprc",
          "[Bootstrap]\nUserInstallation=$SYSUSERCONFIG/libreoffice/5\n");
    EXPECT_EQ(Usual({{"HOME", "/home/a"}}), "/home/a/.config/libreoffice/5");
    EXPECT_EQ(Usual({{"HOME", "/home/a"}, {"XDG_CONFIG_HOME", "/c"}}), "/c/libreoffice/5");
    EXPECT_EQ(Usual({{"HOME", "/home/a"}, {"XDG_CONFIG_HOME", "c"}}),
              "/home/a/.config/libreoffice/5");
    EXPECT_EQ(Usual({{"HOME", "/home/a"}, {"UserInstallation", "file:///p%20q"}}), "/p q");
    Write("office/program/bootstraprc", "UserInstallation=file:///opt/profile\n");
    EXPECT_EQ(Usual({{"HOME", "/home/a"}}), "/opt/profile");
}

TEST_F(OpenProfileTest, FindsTheExtensionOfTheUser) {
    EXPECT_FALSE(HasExtension(program, profile));
    const std::string list =
        "/registry/com.sun.star.comp.deployment.component.PackageRegistryBackend/unorc";
    const fs::path user = "profile/user/uno_packages/cache" + list;
    Write(user, "ORIGIN=x\nUNO_SERVICES= ?$UNO_USER_PACKAGES_CACHE/a.oxt/other.components\n");
    EXPECT_FALSE(HasExtension(program, profile));
    Write(user,
          "UNO_SERVICES= ?$UNO_USER_PACKAGES_CACHE/uno_packages/l_/k.oxt/korvane.components\n");
    EXPECT_TRUE(HasExtension(program, profile));
}

TEST_F(OpenProfileTest, FindsTheExtensionOfAllUsers) {
    Write("office/share/extensions/other/other.components", "");
    EXPECT_FALSE(HasExtension(program, profile));
    Write("office/share/extensions/korvane/korvane.components", "");
    EXPECT_TRUE(HasExtension(program, profile));
}

TEST_F(OpenProfileTest, FindsTheExtensionThatAllUsersShare) {
    Write("office/share/uno_packages/cache/uno_packages/lu1_/k.oxt/korvane.components", "");
    EXPECT_TRUE(HasExtension(program, profile));
}

TEST(PathOfUrlTest, TakesFileUrlsOnly) {
    EXPECT_EQ(PathOfUrl("file:///a%20b/%C3%A4%zz%4"), "/a b/ä%zz%4");
    EXPECT_EQ(PathOfUrl("file://localhost/a"), "/a");
    EXPECT_EQ(PathOfUrl("$SYSUSERCONFIG/a"), "");
}

}  // namespace
}  // namespace korvane::command
