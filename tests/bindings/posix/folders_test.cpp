#include "bindings/posix/folders.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

TEST(UserFolders, AreThoseOfTheEnvironment) {
    const Variable home("HOME", "/home/a");
    const Variable config("XDG_CONFIG_HOME", "/etc/mine");
    const Variable state("XDG_STATE_HOME", "/var/mine");
    EXPECT_EQ(UserFolders().config, "/etc/mine");
    EXPECT_EQ(UserFolders().state, "/var/mine");
}

TEST(UserFolders, AreInTheHomeByDefault) {
    const Variable home("HOME", "/home/a");
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable state("XDG_STATE_HOME", "");
    EXPECT_EQ(UserFolders().config, "/home/a/.config");
    EXPECT_EQ(UserFolders().state, "/home/a/.local/state");
}

TEST(UserFolders, IgnoreRelativeValues) {
    const Variable home("HOME", "/home/a");
    const Variable config("XDG_CONFIG_HOME", "mine");
    const Variable state("XDG_STATE_HOME", "./mine");
    EXPECT_EQ(UserFolders().config, "/home/a/.config");
    EXPECT_EQ(UserFolders().state, "/home/a/.local/state");
}

TEST(UserFolders, AreNoneWithoutAHome) {
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable state("XDG_STATE_HOME", nullptr);
    for (const char* value : {static_cast<const char*>(nullptr), "", "home"}) {
        const Variable home("HOME", value);
        EXPECT_TRUE(UserFolders().config.empty());
        EXPECT_TRUE(UserFolders().state.empty());
    }
}

TEST(MakeFolders, MakesAllThatAreMissingForTheUserAlone) {
    const TempFolder temp;
    MakeFolders(temp.path() / "a/b/c/");
    MakeFolders(temp.path() / "a/b/c");
    for (const char* folder : {"a", "a/b", "a/b/c"}) {
        EXPECT_EQ(ModeOf(temp.path() / folder), 0700U) << folder;
    }
}

TEST(MakeFolders, RaisesWhereThereIsAFile) {
    const TempFolder temp;
    WriteBytes(temp.path() / "a", "");
    EXPECT_THROW(MakeFolders(temp.path() / "a"), Error);
    EXPECT_THROW(MakeFolders(temp.path() / "a/b"), Error);
    EXPECT_THROW(MakeFolders(""), Error);
}

}  // namespace
}  // namespace korvane::posix
