#include "bindings/view_link/view_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

#include "bindings/view_link/failure.h"
#include "bindings/view_link/limits.h"

namespace korvane::view_link {
namespace {

constexpr int kLinkInView = 3;

// What the program finds when it starts.
class StartOrders {
public:
    explicit StartOrders(int link) {
        ::posix_spawn_file_actions_init(&files_);
        // First, because the link may have one of the standard streams' numbers
        // in a process that has closed those.
        ::posix_spawn_file_actions_adddup2(&files_, link, kLinkInView);
        ::posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&files_, kLinkInView + 1);
        ::posix_spawnattr_init(&attributes_);
        sigset_t set;
        ::sigemptyset(&set);
        ::posix_spawnattr_setsigmask(&attributes_, &set);
        ::sigfillset(&set);
        ::posix_spawnattr_setsigdefault(&attributes_, &set);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~StartOrders() {
        ::posix_spawnattr_destroy(&attributes_);
        ::posix_spawn_file_actions_destroy(&files_);
    }
    StartOrders(const StartOrders&) = delete;
    StartOrders& operator=(const StartOrders&) = delete;

    // 0 or a value of errno.
    int Start(pid_t& id, char* const* command) const {
        return ::posix_spawn(&id, command[0], &files_, &attributes_, command, ::environ);
    }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

ViewProcess::ViewProcess(std::vector<std::string> command) {
    auto [ours, views] = ConnectedSockets();
    std::vector<char*> pointers;
    pointers.reserve(command.size() + 1);
    for (std::string& argument : command) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    if (const int code = StartOrders(views.number()).Start(id_, pointers.data()); code != 0) {
        id_ = 0;
        throw SystemFailure(code, command.front());
    }
    link_ = std::move(ours);
}

ViewProcess::~ViewProcess() {
    link_.Close();
    Kill();
    WaitForEnd();
}

bool ViewProcess::HasEnded() {
    if (id_ == 0) return true;
    const pid_t found = ::waitpid(id_, nullptr, WNOHANG);
    // Whoever waits for any child of this process may have been faster.
    if (found == id_ || (found < 0 && errno == ECHILD)) id_ = 0;
    return id_ == 0;
}

void ViewProcess::Kill() {
    // As long as nobody has waited for it, its number is nobody else's.
    if (!HasEnded()) ::kill(id_, SIGKILL);
}

void ViewProcess::End(std::chrono::milliseconds grace) {
    link_.Close();
    const auto last = Clock::now() + grace;
    while (!HasEnded() && Clock::now() < last) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Kill();
    WaitForEnd();
}

void ViewProcess::WaitForEnd() {
    if (id_ == 0) return;
    while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
    id_ = 0;
}

}  // namespace korvane::view_link
