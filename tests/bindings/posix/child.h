// Parts of a test that run in a process of their own.
#pragma once

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>

namespace korvane::posix {

// What a child answers when the system does not let it do what the test needs.
inline constexpr int kNotPermitted = 77;

// Starts `body` in a child, which ends with it: with 1 when an expectation
// failed.
inline pid_t StartChild(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child != 0) return child;
    try {
        body();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "The child raised: " << error.what();
    }
    std::fflush(nullptr);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
}

// The child's exit code; -1 when a signal ended it.
inline int WaitFor(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

inline int InChild(const std::function<void()>& body) { return WaitFor(StartChild(body)); }

// In a child to whom permissions apply: they do not to root.
inline int WithoutPrivileges(const std::function<void()>& body) {
    return InChild([&] {
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setgid(65534) != 0 || ::setuid(65534) != 0)) {
            ::_exit(kNotPermitted);
        }
        body();
    });
}

inline bool WriteText(const char* path, const std::string& text) {
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool done = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(file);
    return done;
}

// Gives this process mounts of its own. False where that is not permitted.
inline bool OwnMounts() {
    const std::string user = std::to_string(::getuid());
    const std::string group = std::to_string(::getgid());
    if (::unshare(CLONE_NEWNS) != 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        WriteText("/proc/self/setgroups", "deny");
        if (!WriteText("/proc/self/uid_map", "0 " + user + " 1")) return false;
        if (!WriteText("/proc/self/gid_map", "0 " + group + " 1")) return false;
    }
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// In a child to whom `folder` is an empty disk of 64 KiB.
inline int OnSmallDisk(const std::filesystem::path& folder, const std::function<void()>& body) {
    return InChild([&] {
        if (!OwnMounts() || ::mount("small", folder.c_str(), "tmpfs", 0, "size=64k") != 0) {
            ::_exit(kNotPermitted);
        }
        body();
    });
}

// Makes the disk that was mounted on `folder` one that cannot be written.
inline bool MakeReadOnly(const std::filesystem::path& folder) {
    return ::mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

// Writes to a new file until the disk has less than `left` bytes.
inline void FillDisk(const std::filesystem::path& file, std::size_t left) {
    const int number = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string block(1024, 'x');
    while (::write(number, block.data(), block.size()) > 0) {
    }
    const off_t size = ::lseek(number, 0, SEEK_END);
    if (::ftruncate(number, size - static_cast<off_t>(left)) != 0) std::abort();
    ::close(number);
}

}  // namespace korvane::posix

// Ends the test, as skipped or failed, by a child's exit code.
#define KORVANE_EXPECT_CHILD(code, what)                                                         \
    do {                                                                                         \
        const int childCode = (code);                                                            \
        if (childCode == ::korvane::posix::kNotPermitted) GTEST_SKIP() << "skipped: " << (what); \
        EXPECT_EQ(childCode, 0);                                                                 \
    } while (false)
