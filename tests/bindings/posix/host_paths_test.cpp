#include "bindings/posix/host_paths.h"

#include <gtest/gtest.h>

namespace korvane::posix {
namespace {

TEST(HostFolder, EndsInABackslash) {
    EXPECT_EQ(HostFolder("/usr/lib/korvane"), u"/usr/lib/korvane\\");
    EXPECT_EQ(HostFolder(""), u"");
}

TEST(HostPaths, SeparatesAsTheSystemDoes) {
    const HostPaths paths({});
    EXPECT_EQ(paths.Native(u"/usr/lib/korvane\\x.log"), "/usr/lib/korvane/x.log");
    EXPECT_EQ(paths.Native(u"/usr/lib/korvane\\logs\\\u00e9.log"),
              "/usr/lib/korvane/logs/\u00e9.log");
    EXPECT_EQ(paths.Native(u"\\usr\\x"), "/usr/x");
    EXPECT_EQ(paths.Native(u"/usr/./a/../b//c\\x"), "/usr/b/c/x");
    EXPECT_EQ(paths.Native(u"/../../x"), "/x");
}

TEST(HostPaths, NamesNothingWithoutARoot) {
    const HostPaths paths({});
    for (const char16_t* path : {u"", u"x.log", u"C:\\Add-ins\\x.log", u"..\\x"}) {
        EXPECT_TRUE(paths.Native(path).empty());
    }
    EXPECT_TRUE(paths.Native(std::u16string(u"/a\0b", 4)).empty());
}

TEST(HostPaths, MapsKnownFoldersExactly) {
    const std::filesystem::path odd = "/home/a\\b/\xFF";
    const HostPaths paths({odd, "", "/home/c"});
    EXPECT_EQ(paths.Native(HostFolder(odd) + u"logs\\x.log"), odd / "logs/x.log");
    EXPECT_EQ(paths.Native(HostFolder(odd) + u"\\x.log"), odd / "x.log");
    EXPECT_EQ(paths.Native(HostFolder(odd) + u"..\\x.log"), "/home/a\\b/x.log");
    EXPECT_EQ(paths.Native(HostFolder("/home/c") + u"x.log"), "/home/c/x.log");
}

TEST(IsBelow, ComparesWholeNames) {
    EXPECT_TRUE(IsBelow("/a/b/c", "/a/b"));
    EXPECT_TRUE(IsBelow("/a/b/c", "/a/b/"));
    EXPECT_TRUE(IsBelow("/a", "/"));
    EXPECT_FALSE(IsBelow("/a/b", "/a/b"));
    EXPECT_FALSE(IsBelow("/a/bc", "/a/b"));
    EXPECT_FALSE(IsBelow("/a", "/a/b"));
    EXPECT_FALSE(IsBelow("/a", ""));
    EXPECT_FALSE(IsBelow("", "/a"));
}

}  // namespace
}  // namespace korvane::posix
