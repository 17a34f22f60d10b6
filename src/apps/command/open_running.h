// The office that runs already, as far as other processes can be seen.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>

namespace korvane::command {

struct RunningOffice {
    pid_t id = 0;
    bool hasAddin = false;  // our component is in it
};

// The office that works with `profile`, by the user's own processes in `processes`
// (a folder such as /proc). Nothing when none does.
std::optional<RunningOffice> FindRunning(const std::filesystem::path& program,
                                         const std::filesystem::path& profile,
                                         const std::filesystem::path& processes = "/proc");

}  // namespace korvane::command
