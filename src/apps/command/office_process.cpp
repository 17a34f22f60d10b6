#include "apps/command/office_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "apps/command/document.h"
#include "apps/command/office_files.h"

namespace korvane::command {
namespace {

using std::chrono::milliseconds;

constexpr int kOfficeSocket = 3;            // the component's end of the socket
constexpr int kOfficeViewLink = 4;          // a view's
constexpr int kWantsToBeStartedAgain = 81;  // the office's exit code for that
constexpr milliseconds kOrderlyEnd{2'000};

[[noreturn]] void Lost(const std::string& message) { throw CommandError(kHostLost, message); }

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const auto& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// The component greets, or says why it refuses to work.
void RequireWelcome(const std::string& greeting) {
    const auto json = nlohmann::json::parse(greeting, nullptr, false);
    if (json.is_object() && json.value("ok", false)) return;
    const bool refuses = json.is_object() && json.contains("error");
    Lost(refuses ? json["error"].value("message", std::string())
                 : "LibreOffice's greeting makes no sense.");
}

// The settings of a process to be started, freed on every way out.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&files_);
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnSettings() {
        for (const int copy : copies_) close(copy);
        if (output_ >= 0) close(output_);
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    // The process gets `socket` and, unless it is negative, `viewLink`, and no
    // other descriptor of ours. What the office has to say goes to the file that
    // KORVANE_OFFICE_LOG names.
    void PassOnly(int socket, int viewLink) {
        const char* const log = std::getenv("KORVANE_OFFICE_LOG");
        const char* const output = log != nullptr && *log != '\0' ? log : "/dev/null";
        output_ = open(output, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        posix_spawn_file_actions_addopen(&files_, 0, "/dev/null", O_RDONLY, 0);
        for (const int standard : {1, 2}) {
            if (output_ >= 0) posix_spawn_file_actions_adddup2(&files_, output_, standard);
        }
        Pass(socket, kOfficeSocket);
        if (viewLink >= 0) Pass(viewLink, kOfficeViewLink);
        posix_spawn_file_actions_addclosefrom_np(&files_, kOfficeSocket + (viewLink < 0 ? 1 : 2));
    }
    const posix_spawn_file_actions_t* files() const { return &files_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    // By way of a number that no other one goes to.
    void Pass(int descriptor, int as) {
        const int copy = fcntl(descriptor, F_DUPFD_CLOEXEC, kOfficeViewLink + 1);
        if (copy < 0) Lost(std::string("No descriptor for LibreOffice: ") + std::strerror(errno));
        copies_.push_back(copy);
        posix_spawn_file_actions_adddup2(&files_, copy, as);
    }

    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
    int output_ = -1;
    std::vector<int> copies_;
};

}  // namespace

OfficeProcess::OfficeProcess(const std::filesystem::path& program,
                             const std::filesystem::path& component, const OfficeTimes& times,
                             int viewLink) {
    const auto arguments = PrepareOffice(folder_, program, component);
    const auto environment = OfficeEnvironment(folder_);
    const Deadline deadline = Clock::now() + times.start;
    try {
        for (int again = 0; again < 3; ++again) {
            Start(arguments, environment, viewLink);
            if (const auto greeting = Receive(deadline)) {
                RequireWelcome(*greeting);
                return;
            }
            const auto status = Reap(kOrderlyEnd);
            End();
            if (!status || !WIFEXITED(*status) || WEXITSTATUS(*status) != kWantsToBeStartedAgain)
                break;
        }
        Lost("LibreOffice could not be started: it ended at once. Does " + program.string() +
             "/soffice.bin run by itself?");
    } catch (...) {
        End();
        throw;
    }
}

OfficeProcess::~OfficeProcess() { End(); }

void OfficeProcess::Start(const std::vector<std::string>& arguments,
                          const std::vector<std::string>& environment, int viewLink) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        Lost(std::string("No socket for LibreOffice: ") + std::strerror(errno));
    }
    socket_ = ends[0];
    SpawnSettings settings;
    settings.PassOnly(ends[1], viewLink);
    pid_t process = -1;
    const int failed =
        posix_spawn(&process, arguments[0].c_str(), settings.files(), settings.attributes(),
                    Pointers(arguments).data(), Pointers(environment).data());
    close(ends[1]);
    if (failed != 0) {
        Lost("LibreOffice could not be started (" + arguments[0] + "): " + std::strerror(failed));
    }
    process_ = process;
    fcntl(socket_, F_SETFL, O_NONBLOCK);
}

std::string OfficeProcess::Ask(const std::string& line, std::optional<milliseconds> time) {
    if (socket_ < 0) Lost("LibreOffice has been lost.");
    const Deadline deadline = time ? Deadline(Clock::now() + *time) : std::nullopt;
    try {
        Send(line + '\n', deadline);
        if (auto answer = Receive(deadline)) return *std::move(answer);
    } catch (...) {
        End();
        throw;
    }
    End();
    Lost("LibreOffice was lost: its process ended while it was working. Try again.");
}

void OfficeProcess::Send(const std::string& line, const Deadline& deadline) {
    std::size_t sent = 0;
    while (sent < line.size()) {
        if (!Wait(POLLOUT, deadline)) continue;
        const ssize_t count = send(socket_, line.data() + sent, line.size() - sent, MSG_NOSIGNAL);
        if (count >= 0) {
            sent += static_cast<std::size_t>(count);
        } else if (errno != EAGAIN && errno != EINTR) {
            return;  // the process is gone, as the answer will tell
        }
    }
}

std::optional<std::string> OfficeProcess::Receive(const Deadline& deadline) {
    std::size_t searched = 0;
    for (;;) {
        if (const auto end = received_.find('\n', searched); end != std::string::npos) {
            std::string line = received_.substr(0, end);
            received_.erase(0, end + 1);
            return line;
        }
        searched = received_.size();
        if (!Wait(POLLIN, deadline)) continue;
        char buffer[65'536];
        const ssize_t count = recv(socket_, buffer, sizeof buffer, 0);
        if (count > 0) {
            received_.append(buffer, static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return std::nullopt;
        }
    }
}

// Whether the socket is ready; false means to ask again.
bool OfficeProcess::Wait(short events, const Deadline& deadline) {
    pollfd watched[2] = {{socket_, events, 0}, {signals_.descriptor(), POLLIN, 0}};
    int time = -1;
    if (deadline) {
        const auto left = std::chrono::ceil<milliseconds>(*deadline - Clock::now());
        time = static_cast<int>(std::max<milliseconds::rep>(left.count(), 0));
    }
    const int ready = poll(watched, 2, time);
    if (ready < 0) return false;  // interrupted
    if ((watched[1].revents & POLLIN) != 0 && signals_.Take()) Lost("Interrupted.");
    if (ready == 0) throw TimeIsUp("LibreOffice did not answer in time and was ended.");
    return watched[0].revents != 0;
}

std::optional<int> OfficeProcess::Reap(milliseconds time) {
    const auto until = Clock::now() + time;
    for (milliseconds pause{1};; pause = std::min(pause * 2, milliseconds{20})) {
        int status = 0;
        const pid_t ended = waitpid(process_, &status, WNOHANG);
        if (ended == process_ || (ended < 0 && errno != EINTR)) {
            process_ = -1;
            return status;
        }
        if (Clock::now() >= until) return std::nullopt;
        poll(nullptr, 0, static_cast<int>(pause.count()));
    }
}

// The component ends its process when the socket closes. One that is busy or
// stopped does so too late, or never.
void OfficeProcess::End() {
    if (socket_ >= 0) close(socket_);
    socket_ = -1;
    received_.clear();
    if (process_ <= 0) return;
    const pid_t group = process_;
    if (!Reap(kOrderlyEnd)) {
        kill(-group, SIGKILL);
        Reap(milliseconds{10'000});
        process_ = -1;
    }
}

}  // namespace korvane::command
