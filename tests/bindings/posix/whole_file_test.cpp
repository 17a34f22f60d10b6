#include "bindings/posix/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "bindings/posix/child.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using Names = std::vector<std::string>;

TEST(ReadWhole, ReadsWhatIsThere) {
    const TempFolder temp;
    const std::string bytes = std::string("a\0b", 3) + std::string(100'000, 'x');
    EXPECT_EQ(ReadWhole(temp.path() / "file"), std::nullopt);
    WriteBytes(temp.path() / "file", bytes);
    EXPECT_EQ(ReadWhole(temp.path() / "file"), bytes);
}

TEST(ReadWhole, RaisesForWhatIsNoFile) {
    const TempFolder temp;
    EXPECT_THROW(ReadWhole(temp.path()), Error);
    EXPECT_THROW(ReadWhole("/dev/zero"), Error);
    ASSERT_EQ(::mkfifo((temp.path() / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(ReadWhole(temp.path() / "pipe"), Error);
    WriteBytes(temp.path() / "large", "");
    std::filesystem::resize_file(temp.path() / "large", kLargestFile + 1);
    EXPECT_THROW(ReadWhole(temp.path() / "large"), Error);
}

TEST(ReplaceWhole, MakesAFileForTheUserAlone) {
    const TempFolder temp;
    ReplaceWhole(temp.path() / "file", "abc");
    EXPECT_EQ(ReadBytes(temp.path() / "file"), "abc");
    EXPECT_EQ(ModeOf(temp.path() / "file"), 0600U);
    EXPECT_EQ(NamesIn(temp.path()), Names{"file"});
}

TEST(ReplaceWhole, KeepsModeAndOwner) {
    const TempFolder temp;
    const auto file = temp.path() / "file";
    WriteBytes(file, "old");
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
    }
    ::chmod(file.c_str(), 0640);
    struct stat before {};
    ::stat(file.c_str(), &before);
    ReplaceWhole(file, "new");
    struct stat after {};
    ::stat(file.c_str(), &after);
    EXPECT_EQ(ReadBytes(file), "new");
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST(ReplaceWhole, TakesNoNoticeOfWhatAKilledProcessLeft) {
    const TempFolder temp;
    WriteBytes(temp.path() / "file.new", "torn");
    ::chmod((temp.path() / "file.new").c_str(), 0);
    KORVANE_EXPECT_CHILD(WithoutPrivileges([&] { ReplaceWhole(temp.path() / "file", "abc"); }),
                         "no other user to be");
    EXPECT_EQ(ReadBytes(temp.path() / "file"), "abc");
    EXPECT_EQ(NamesIn(temp.path()), Names{"file"});
}

TEST(ReplaceWhole, LeavesAProtectedFileAlone) {
    const TempFolder temp;
    KORVANE_EXPECT_CHILD(WithoutPrivileges([&] {
                             const auto file = temp.path() / "file";
                             WriteBytes(file, "old");
                             ::chmod(file.c_str(), 0400);
                             EXPECT_THROW(ReplaceWhole(file, "new"), Error);
                             EXPECT_EQ(ReadBytes(file), "old");
                             EXPECT_EQ(NamesIn(temp.path()), Names{"file"});
                         }),
                         "no other user to be");
}

TEST(ReplaceWhole, LeavesAllAsBeforeWhenItFails) {
    const TempFolder temp;
    std::filesystem::create_directories(temp.path() / "folder/within");
    EXPECT_THROW(ReplaceWhole(temp.path() / "folder", "abc"), Error);
    EXPECT_THROW(ReplaceWhole(temp.path() / "none/file", "abc"), Error);
    EXPECT_THROW(ReplaceWhole(temp.path() / "file", std::string(kLargestFile + 1, 'x')), Error);
    EXPECT_EQ(NamesIn(temp.path()), Names{"folder"});
}

TEST(ReplaceWhole, LeavesAllAsBeforeWhenTheDiskIsFull) {
    const TempFolder temp;
    const int code = OnSmallDisk(temp.path(), [&] {
        const auto file = temp.path() / "file";
        ReplaceWhole(file, "old");
        FillDisk(temp.path() / "filler", 4096);
        try {
            ReplaceWhole(file, std::string(20'000, 'x'));
            ADD_FAILURE() << "there is no room for it";
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorDiskFull);
        }
        EXPECT_EQ(ReadBytes(file), "old");
        EXPECT_EQ(NamesIn(temp.path()), (Names{"file", "filler"}));
        ReplaceWhole(file, "new");
        EXPECT_EQ(ReadBytes(file), "new");
    });
    KORVANE_EXPECT_CHILD(code, "a small disk may not be mounted here");
}

TEST(LinkTarget, IsWhereAllLinksLead) {
    const TempFolder temp;
    std::filesystem::create_directory(temp.path() / "dots");
    std::filesystem::create_symlink("dots/second", temp.path() / "first");
    std::filesystem::create_symlink("../third", temp.path() / "dots/second");
    EXPECT_EQ(LinkTarget(temp.path() / "first").lexically_normal(), temp.path() / "third");
    std::filesystem::create_symlink("/elsewhere", temp.path() / "third");
    EXPECT_EQ(LinkTarget(temp.path() / "first"), "/elsewhere");
    EXPECT_EQ(LinkTarget(temp.path() / "none"), temp.path() / "none");
}

TEST(LinkTarget, ComesToAnEndInACircle) {
    const TempFolder temp;
    std::filesystem::create_symlink("a", temp.path() / "a");
    EXPECT_EQ(LinkTarget(temp.path() / "a"), temp.path() / "a");
}

TEST(SyncFolder, NeverFails) {
    const TempFolder temp;
    SyncFolder(temp.path());
    SyncFolder(temp.path() / "none");
}

}  // namespace
}  // namespace korvane::posix
