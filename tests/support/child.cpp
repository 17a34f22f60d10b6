#include "support/child.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace korvane::test {
namespace {

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

Child::Child(std::vector<std::string> command, std::vector<std::string> environment, int third) {
    auto arguments = Pointers(command);
    const pid_t parent = ::getpid();
    id_ = ::fork();
    if (id_ != 0) return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(126);
    if (third == 3) {
        ::fcntl(3, F_SETFD, 0);
    } else if (third >= 0) {
        ::dup2(third, 3);
    }
    for (std::string& entry : environment) ::putenv(entry.data());
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

Child::~Child() {
    if (WaitForEnd(0ms)) return;
    ::kill(id_, SIGKILL);
    WaitForEnd(5s);
}

std::optional<int> Child::WaitForEnd(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!status_) {
        int status = 0;
        if (::waitpid(id_, &status, WNOHANG) == id_) {
            status_ = status;
        } else if (std::chrono::steady_clock::now() >= end) {
            break;
        } else {
            std::this_thread::sleep_for(5ms);
        }
    }
    return status_;
}

bool HasProgram(const std::string& name) {
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) return output;
    std::array<char, 4096> buffer{};
    for (std::size_t n = 0; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        output.append(buffer.data(), n);
    }
    ::pclose(pipe);
    return output;
}

}  // namespace korvane::test
