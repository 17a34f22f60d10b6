#include "bindings/posix/posix_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "base/text.h"
#include "bindings/posix/child.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

class PosixFilesTest : public testing::Test {
protected:
    PosixFilesTest() { std::filesystem::create_directory(addIn_); }

    TempFolder temp_;
    std::filesystem::path addIn_ = temp_.path() / "addin";
    std::filesystem::path state_ = temp_.folders().state / "korvane";
};

TEST_F(PosixFilesTest, AppendsLines) {
    PosixFiles files(temp_.folders(), addIn_);
    const auto path = HostFolder(addIn_) + u"x.log";
    files.AppendLine(path, u"one \u00e9");
    files.AppendLine(path, u"");
    files.AppendLine(path, u"two");
    EXPECT_EQ(ReadBytes(addIn_ / "x.log"), "one \xC3\xA9\n\ntwo\n");
    EXPECT_EQ(ModeOf(addIn_ / "x.log"), 0600U);
}

TEST_F(PosixFilesTest, KeepsALineOnOneLine) {
    PosixFiles files(temp_.folders(), addIn_);
    files.AppendLine(HostFolder(addIn_) + u"x.log", u"a\r\nb\nc");
    EXPECT_EQ(ReadBytes(addIn_ / "x.log"), "a  b c\n");
}

TEST_F(PosixFilesTest, MakesFoldersForStateOnly) {
    PosixFiles files(temp_.folders(), addIn_);
    EXPECT_EQ(files.StateFolder(), HostFolder(state_));
    EXPECT_FALSE(std::filesystem::exists(state_));
    files.AppendLine(files.StateFolder() + u"logs\\x.log", u"a");
    EXPECT_EQ(ReadBytes(state_ / "logs/x.log"), "a\n");
    EXPECT_EQ(ModeOf(state_), 0700U);
    EXPECT_THROW(files.AppendLine(HostFolder(addIn_) + u"logs\\x.log", u"a"), Error);
    EXPECT_THROW(files.AppendLine(files.StateFolder() + u"..\\b\\x.log", u"a"), Error);
    EXPECT_TRUE(NamesIn(addIn_).empty());
    EXPECT_EQ(NamesIn(temp_.folders().state), std::vector<std::string>{"korvane"});
}

TEST_F(PosixFilesTest, NamesNoStateFolderWithoutAHome) {
    PosixFiles files(Folders{}, temp_.path() / "none");
    EXPECT_EQ(files.StateFolder(), u"");
    EXPECT_THROW(files.AppendLine(files.StateFolder() + u"x.log", u"a"), Error);
    EXPECT_THROW(files.AppendLine(HostFolder(temp_.path() / "none") + u"x.log", u"a"), Error);
}

TEST_F(PosixFilesTest, RaisesWhereNothingCanBeWritten) {
    PosixFiles files(temp_.folders());
    EXPECT_THROW(files.AppendLine(u"C:\\Add-ins\\x.log", u"a"), Error);
    EXPECT_THROW(files.AppendLine(u"x.log", u"a"), Error);
    EXPECT_THROW(files.AppendLine(HostFolder(temp_.path()), u"a"), Error);
    EXPECT_THROW(files.AppendLine(u"/dev/full", u"a"), Error);
    ASSERT_EQ(::mkfifo((temp_.path() / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(files.AppendLine(HostFolder(temp_.path()) + u"pipe", u"a"), Error);
}

TEST_F(PosixFilesTest, KnowsWhatExists) {
    PosixFiles files(temp_.folders(), addIn_);
    WriteBytes(addIn_ / "x.xml", "");
    EXPECT_TRUE(files.Exists(HostFolder(addIn_) + u"x.xml"));
    EXPECT_FALSE(files.Exists(HostFolder(addIn_) + u"y.xml"));
    EXPECT_FALSE(files.Exists(HostFolder(addIn_)));
    EXPECT_FALSE(files.Exists(HostFolder(temp_.path()) + u"addin"));
    EXPECT_FALSE(files.Exists(u"C:\\x.xml"));
    EXPECT_FALSE(files.Exists(u""));
}

TEST_F(PosixFilesTest, WritesForAReadOnlyAddInElsewhere) {
    const int code = WithoutPrivileges([&] {
        const auto installed = temp_.path() / "installed";
        std::filesystem::create_directory(installed);
        WriteBytes(installed / "help.html", "");
        ::chmod(installed.c_str(), 0555);
        PosixFiles files(temp_.folders(), installed);
        const auto folder = HostFolder(installed);
        files.AppendLine(folder + u"x.log", u"a");
        files.AppendLine(folder + u"logs\\y.log", u"b");
        EXPECT_EQ(ReadBytes(state_ / "x.log"), "a\n");
        EXPECT_EQ(ReadBytes(state_ / "logs/y.log"), "b\n");
        EXPECT_TRUE(files.Exists(folder + u"help.html"));
        EXPECT_FALSE(files.Exists(folder + u"x.log"));
        EXPECT_THROW(files.AppendLine(folder + u"..\\none\\z.log", u"c"), Error);
        // Asked at the start only.
        ::chmod(installed.c_str(), 0755);
        files.AppendLine(folder + u"x.log", u"d");
        EXPECT_EQ(ReadBytes(state_ / "x.log"), "a\nd\n");
        EXPECT_EQ(PosixFiles(temp_.folders(), installed / "").PlaceToWrite(folder + u"x.log"),
                  installed / "x.log");
    });
    KORVANE_EXPECT_CHILD(code, "no other user to be");
}

TEST_F(PosixFilesTest, TakesAReadOnlyDiskForAReadOnlyFolder) {
    const int code = OnSmallDisk(addIn_, [&] {
        if (!MakeReadOnly(addIn_)) ::_exit(kNotPermitted);
        PosixFiles files(temp_.folders(), addIn_);
        files.AppendLine(HostFolder(addIn_) + u"x.log", u"a");
        EXPECT_EQ(ReadBytes(state_ / "x.log"), "a\n");
    });
    KORVANE_EXPECT_CHILD(code, "a small disk may not be mounted here");
}

TEST_F(PosixFilesTest, LeavesNoPartOfALineOnAFullDisk) {
    const int code = OnSmallDisk(temp_.path(), [&] {
        PosixFiles files(temp_.folders());
        const auto path = HostFolder(temp_.path()) + u"x.log";
        files.AppendLine(path, u"first");
        FillDisk(temp_.path() / "filler", 8192);
        try {
            files.AppendLine(path, std::u16string(30'000, u'x'));
            ADD_FAILURE() << "there is no room for it";
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorDiskFull);
        }
        EXPECT_EQ(ReadBytes(temp_.path() / "x.log"), "first\n");
        files.AppendLine(path, u"second");
        EXPECT_EQ(ReadBytes(temp_.path() / "x.log"), "first\nsecond\n");
    });
    KORVANE_EXPECT_CHILD(code, "a small disk may not be mounted here");
}

TEST_F(PosixFilesTest, KeepsTheLinesOfSeveralWritersApart) {
    constexpr int kWriters = 6;
    constexpr int kLines = 100;
    const auto path = HostFolder(addIn_) + u"x.log";
    std::vector<pid_t> children;
    for (int writer = 0; writer < kWriters; ++writer) {
        children.push_back(StartChild([&] {
            PosixFiles files(temp_.folders(), addIn_);
            const std::u16string line(5'000, static_cast<char16_t>(u'a' + writer));
            for (int k = 0; k < kLines; ++k) files.AppendLine(path, line);
        }));
    }
    for (const pid_t child : children) EXPECT_EQ(WaitFor(child), 0);
    std::ifstream log(addIn_ / "x.log");
    int lines = 0;
    for (std::string line; std::getline(log, line); ++lines) {
        ASSERT_EQ(line, std::string(5'000, line.empty() ? '?' : line.front()));
    }
    EXPECT_EQ(lines, kWriters * kLines);
}

}  // namespace
}  // namespace korvane::posix
