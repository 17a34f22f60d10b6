#include "bindings/posix/spawn.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

#include "bindings/posix/child.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/recorder.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using Arguments = std::vector<std::string>;

// Without folders that are closed to some: a name that may be in one of them is
// not missing for certain.
constexpr const char* kOpenPath = "/usr/bin:/bin";

std::size_t OpenFiles() { return NamesIn("/proc/self/fd").size(); }

TEST(SpawnDetached, PassesArgumentsAsTheyStand) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program");
    const Arguments arguments = {"a b", "", "$(touch x)", "`touch x`", "'\"\n", "*", "-n", "\xFF"};
    Arguments all = {program.program()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    SpawnDetached(all);
    EXPECT_EQ(program.TakeArguments(), arguments);
}

TEST(SpawnDetached, LooksInPathAndPassesTheEnvironment) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program-in-path", "printf %s \"$KORVANE_WORD\"");
    const std::string path = temp.path().native() + ":" + std::getenv("PATH");
    const Variable search("PATH", path.c_str());
    const Variable word("KORVANE_WORD", "hello");
    SpawnDetached({"program-in-path", "a"});
    EXPECT_EQ(program.Take(), std::string("a\0hello", 7));
}

TEST(SpawnDetached, RaisesWhenNothingCanBeStarted) {
    const TempFolder temp;
    WriteBytes(temp.path() / "plain", "#!/bin/sh\n");
    ::chmod((temp.path() / "plain").c_str(), 0644);
    const Variable search("PATH", kOpenPath);
    const auto files = OpenFiles();
    try {
        SpawnDetached({"korvane-no-such-program"});
        ADD_FAILURE() << "there is no such program";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), kErrorFileNotFound);
        EXPECT_NE(error.description().find(u"korvane-no-such-program"), std::u16string::npos);
    }
    EXPECT_THROW(SpawnDetached({temp.path() / "plain"}), Error);
    EXPECT_THROW(SpawnDetached({temp.path()}), Error);
    EXPECT_EQ(OpenFiles(), files);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(SpawnDetached, LeavesNoChildAndNoOpenFile) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program", "sleep 0.05");
    const auto files = OpenFiles();
    for (int k = 0; k < 10; ++k) {
        SpawnDetached({program.program()});
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    }
    EXPECT_EQ(OpenFiles(), files);
    program.Take();
    ::usleep(100'000);  // the others may still write their records
}

TEST(SpawnDetached, PassesOnNothingElse) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program",
                           "ls /proc/$$/fd; for n in 0 2; do readlink /proc/$$/fd/$n; done\n"
                           "grep -E '^Sig(Blk|Ign)|^PPid' /proc/self/status\n"
                           "cut -d' ' -f6 /proc/$$/stat; echo $$");
    const int code = InChild([&] {
        ASSERT_EQ(::dup2(::open("/dev/null", O_RDONLY), 57), 57);  // inherited by any exec
        ASSERT_EQ(::dup2(57, 0), 0);
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGTERM, SIG_IGN);
        sigset_t set;
        sigemptyset(&set);
        sigaddset(&set, SIGUSR1);
        sigprocmask(SIG_BLOCK, &set, nullptr);
        SpawnDetached({program.program()});
        sigset_t now;
        sigprocmask(SIG_BLOCK, nullptr, &now);
        EXPECT_EQ(sigismember(&now, SIGUSR1), 1);
        EXPECT_EQ(sigismember(&now, SIGUSR2), 0);
    });
    EXPECT_EQ(code, 0);
    const std::string record = program.Take();
    EXPECT_EQ(record.find("57\n"), std::string::npos) << record;
    EXPECT_NE(record.find("/dev/null\n/dev/null\n"), std::string::npos) << record;
    EXPECT_NE(record.find("SigBlk:\t0000000000000000"), std::string::npos) << record;
    // Not the two signals that the C library keeps to itself.
    const auto ignored = std::stoull(record.substr(record.find("SigIgn:") + 7), nullptr, 16);
    EXPECT_EQ(ignored & 0x7FFFFFFFU, 0U) << record;
}

TEST(SpawnDetached, WorksWithoutOpenFilesAndWhereChildrenAreReaped) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program");
    const Variable search("PATH", kOpenPath);
    const int code = InChild([&] {
        std::signal(SIGCHLD, SIG_IGN);
        ::close(0);
        ::close(1);
        SpawnDetached({program.program(), "a"});
        try {
            SpawnDetached({"korvane-no-such-program"});
            ADD_FAILURE() << "there is no such program";
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorFileNotFound);
        }
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(program.TakeArguments(), Arguments{"a"});
}

TEST(SpawnDetached, ReturnsWhileTheProgramRunsInASessionOfItsOwn) {
    const TempFolder temp;
    const Recorder program(temp.path(), "program",
                           "while [ ! -e " + (temp.path() / "go").native() +
                               " ]; do sleep 0.01; done; cut -d' ' -f5,6 /proc/self/stat");
    SpawnDetached({program.program()});
    EXPECT_FALSE(program.WasRun());
    WriteBytes(temp.path() / "go", "");
    std::istringstream record(program.Take().substr(1));  // without its one empty argument
    pid_t group = 0;
    pid_t session = 0;
    record >> group >> session;
    EXPECT_EQ(group, session);
    EXPECT_NE(session, ::getsid(0));
}

}  // namespace
}  // namespace korvane::posix
