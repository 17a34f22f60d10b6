// An office process of our own: started, talked to, ended.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/command/private_folder.h"
#include "apps/command/signal_watch.h"

namespace korvane::command {

// How long the office may take; nothing means for ever.
struct OfficeTimes {
    std::chrono::milliseconds start{60'000};
    std::chrono::milliseconds open{300'000};
    std::optional<std::chrono::milliseconds> explore;
};

// The process has a profile and temporary files in a private folder, a socket
// that no other program can reach, and a process group of its own, so that
// Ctrl+C comes to us alone. It ends with this object or, if we are killed, with
// us; either way the folder goes.
class OfficeProcess {
public:
    // Starts `program` (the folder of the office's program files) with
    // `component`; returns when the component has answered. The process inherits
    // `viewLink`, unless it is negative, as its descriptor 4. Throws CommandError
    // kHostLost.
    OfficeProcess(const std::filesystem::path& program, const std::filesystem::path& component,
                  const OfficeTimes& times, int viewLink = -1);
    ~OfficeProcess();
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;

    // Sends one line and returns the answering line, both without line end.
    // Throws CommandError kHostLost when the process is lost, when it takes
    // longer than `time`, and when a signal asks this program to end; the
    // process is ended then, and every later call throws.
    std::string Ask(const std::string& line, std::optional<std::chrono::milliseconds> time);

    const PrivateFolder& folder() const { return folder_; }
    pid_t id() const { return process_; }

private:
    using Clock = std::chrono::steady_clock;
    using Deadline = std::optional<Clock::time_point>;

    void Start(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment, int viewLink);
    void Send(const std::string& line, const Deadline& deadline);
    std::optional<std::string> Receive(const Deadline& deadline);  // nothing at the end
    bool Wait(short events, const Deadline& deadline);
    // Waits for the process until then. Nothing while it runs on.
    std::optional<int> Reap(std::chrono::milliseconds time);
    void End();

    SignalWatch signals_;  // first: it lets the signals through when all else is gone
    PrivateFolder folder_;
    pid_t process_ = -1;
    int socket_ = -1;
    std::string received_;  // what came behind the last line
};

}  // namespace korvane::command
