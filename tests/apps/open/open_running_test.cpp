#include "apps/command/open_running.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace korvane::command {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// A folder of processes that looks as the system's does.
class OpenRunningTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "korvane-running-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        processes = pattern;
    }
    void TearDown() override { fs::remove_all(processes); }

    void Add(const std::string& id, const std::string& program, const std::string& arguments,
             const std::string& environment = {}, const std::string& maps = {}) {
        const fs::path process = processes / id;
        fs::create_directories(process);
        fs::create_symlink(program, process / "exe");
        std::ofstream(process / "cmdline") << arguments;
        std::ofstream(process / "environ") << environment;
        std::ofstream(process / "maps") << maps;
    }
    std::optional<RunningOffice> Find(const fs::path& profile) {
        return FindRunning("/opt/office/program", profile, processes);
    }

    fs::path processes;
};

TEST_F(OpenRunningTest, KnowsTheProfileByTheArguments) {
    Add("self", "/opt/office/program/soffice.bin",
        "soffice.bin\0-env:UserInstallation=file:///p\0"s);
    EXPECT_FALSE(Find("/p"));
    Add("17", "/opt/office/program/soffice.bin",
        "soffice.bin\0-env:UserInstallation=file:///p%20q\0--calc\0"s);
    ASSERT_TRUE(Find("/p q/"));
    EXPECT_EQ(Find("/p q")->id, 17);
    EXPECT_FALSE(Find("/p q")->hasAddin);
    EXPECT_FALSE(Find("/p"));
}

TEST_F(OpenRunningTest, KnowsTheProfileByTheEnvironment) {
    Add("3", "/usr/bin/other",
        "other\0-env:UserInstallation=file:///home/a/.config/libreoffice/4\0"s);
    EXPECT_FALSE(Find("/home/a/.config/libreoffice/4"));
    Add("4", "/opt/office/program/soffice.bin", "soffice.bin\0"s, "LANG=C\0HOME=/home/a\0"s);
    EXPECT_TRUE(Find("/home/a/.config/libreoffice/4"));
    EXPECT_FALSE(Find("/home/b/.config/libreoffice/4"));
}

TEST_F(OpenRunningTest, SeesTheComponent) {
    Add("5", "/opt/office/program/soffice.bin (deleted)", "soffice.bin\0"s, "HOME=/home/a\0"s,
        "7f00-7f01 r-xp 0 00:01 7 /usr/lib/korvane/libkorvane-office.so\n");
    const auto found = Find("/home/a/.config/libreoffice/4");
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->hasAddin);
}

TEST_F(OpenRunningTest, FindsNothingWithoutProcesses) {
    EXPECT_FALSE(FindRunning("/opt", "/p", processes / "missing"));
}

}  // namespace
}  // namespace korvane::command
