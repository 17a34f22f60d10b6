#include "bindings/posix/spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "bindings/posix/descriptor.h"
#include "bindings/posix/errors.h"

namespace korvane::posix {
namespace {

// What the program finds when it starts.
class SpawnOrders {
public:
    SpawnOrders() {
        ::posix_spawn_file_actions_init(&files_);
        for (int file = 0; file <= 2; ++file) {
            ::posix_spawn_file_actions_addopen(&files_, file, "/dev/null", O_RDWR, 0);
        }
        ::posix_spawn_file_actions_addclosefrom_np(&files_, 3);
        ::posix_spawnattr_init(&attributes_);
        sigset_t set;
        ::sigemptyset(&set);
        ::posix_spawnattr_setsigmask(&attributes_, &set);
        ::sigfillset(&set);
        ::posix_spawnattr_setsigdefault(&attributes_, &set);
        ::posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    }
    ~SpawnOrders() {
        ::posix_spawnattr_destroy(&attributes_);
        ::posix_spawn_file_actions_destroy(&files_);
    }
    SpawnOrders(const SpawnOrders&) = delete;
    SpawnOrders& operator=(const SpawnOrders&) = delete;

    // 0 or a value of errno. Takes no memory and no lock.
    int Run(char* const* arguments) const {
        pid_t process = 0;
        return ::posix_spawnp(&process, arguments[0], &files_, &attributes_, arguments, ::environ);
    }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

// No handler of this process runs in a child before that is another program.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before_{};
};

// The code that the child has written; EIO when it was killed before it could.
int ReadCode(int file) {
    int code = 0;
    ssize_t count = 0;
    do {
        count = ::read(file, &code, sizeof code);
    } while (count < 0 && errno == EINTR);
    return count == sizeof code ? code : EIO;
}

// The child may not be there to be waited for: a process that ignores SIGCHLD,
// or waits for any child, has reaped it.
void Reap(pid_t child) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

// Lets a child start the program and end, so that the program is nobody's child.
// The child does what is allowed beside other threads only. 0 or a value of
// errno.
int RunFromChild(char* const* arguments) {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) return errno;
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const SpawnOrders orders;
    const SignalsBlocked blocked;
    const pid_t child = ::fork();
    if (child < 0) return errno;
    if (child == 0) {
        const int code = orders.Run(arguments);
        [[maybe_unused]] const ssize_t count = ::write(writing.get(), &code, sizeof code);
        ::_exit(0);
    }
    writing.Close();
    const int code = ReadCode(reading.get());
    Reap(child);
    return code;
}

}  // namespace

void SpawnDetached(const std::vector<std::string>& arguments) {
    std::vector<std::string> copies = arguments;
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (std::string& argument : copies) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    if (const int code = RunFromChild(pointers.data()); code != 0) {
        throw SystemError(code, arguments.front());
    }
}

}  // namespace korvane::posix
