#include "bindings/posix/file_lock.h"

#include <gtest/gtest.h>

#include <csignal>

#include "base/error.h"
#include "bindings/posix/child.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using std::chrono::milliseconds;

TEST(FileLock, IsHeldByOneAtATime) {
    const TempFolder temp;
    const auto path = temp.path() / "lock";
    {
        const FileLock lock(path, milliseconds(0));
        EXPECT_EQ(ModeOf(path), 0600U);
        EXPECT_THROW(FileLock(path, milliseconds(20)), Error);
    }
    const FileLock again(path, milliseconds(0));
}

TEST(FileLock, WaitsForItsTurn) {
    const TempFolder temp;
    const auto path = temp.path() / "lock";
    const pid_t child = StartChild([&] {
        const FileLock lock(path, milliseconds(0));
        WriteBytes(temp.path() / "held", "");
        ::usleep(50'000);
    });
    while (!std::filesystem::exists(temp.path() / "held")) ::usleep(1'000);
    const FileLock lock(path, milliseconds(5'000));
    EXPECT_EQ(WaitFor(child), 0);
}

TEST(FileLock, GoesWithAProcessThatIsKilled) {
    const TempFolder temp;
    const auto path = temp.path() / "lock";
    const pid_t child = StartChild([&] {
        const FileLock lock(path, milliseconds(0));
        WriteBytes(temp.path() / "held", "");
        ::pause();
    });
    while (!std::filesystem::exists(temp.path() / "held")) ::usleep(1'000);
    EXPECT_THROW(FileLock(path, milliseconds(0)), Error);
    ::kill(child, SIGKILL);
    EXPECT_EQ(WaitFor(child), -1);
    const FileLock lock(path, milliseconds(0));
}

TEST(FileLock, DoesNotStayWithAChildOfThisProcess) {
    const TempFolder temp;
    const auto path = temp.path() / "lock";
    pid_t child = 0;
    {
        const FileLock lock(path, milliseconds(0));
        child = StartChild([] { ::pause(); });
    }
    EXPECT_NO_THROW(FileLock(path, milliseconds(0)));
    ::kill(child, SIGKILL);
    EXPECT_EQ(WaitFor(child), -1);
}

TEST(FileLock, LetsOthersInBetween) {
    const TempFolder temp;
    const auto path = temp.path() / "lock";
    const pid_t greedy = StartChild([&] {
        for (;;) {
            const FileLock lock(path, milliseconds(10'000));
            WriteBytes(temp.path() / "held", "");
            ::usleep(2'000);
        }
    });
    while (!std::filesystem::exists(temp.path() / "held")) ::usleep(1'000);
    for (int k = 0; k < 10; ++k) EXPECT_NO_THROW(FileLock(path, milliseconds(3'000)));
    ::kill(greedy, SIGKILL);
    EXPECT_EQ(WaitFor(greedy), -1);
}

TEST(LockBefore, LocksSingleBytes) {
    const TempFolder temp;
    const auto path = temp.path() / "file";
    const auto open = [&] { return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600); };
    const Descriptor first(open());
    const Descriptor second(open());
    EXPECT_TRUE(LockBefore({}, first.get(), 0, path));
    EXPECT_FALSE(LockBefore({}, second.get(), 0, path));
    EXPECT_TRUE(LockBefore({}, second.get(), 1, path));
    EXPECT_THROW(LockBefore({}, -1, 0, path), Error);
}

TEST(FileLock, RaisesWhereThereIsNoFile) {
    const TempFolder temp;
    EXPECT_THROW(FileLock(temp.path(), milliseconds(0)), Error);
    EXPECT_THROW(FileLock(temp.path() / "none/lock", milliseconds(0)), Error);
}

}  // namespace
}  // namespace korvane::posix
