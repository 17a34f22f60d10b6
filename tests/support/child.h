// A program that a test starts and that ends with it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace korvane::test {

using namespace std::chrono_literals;

class Child {
public:
    // `environment` is added to this process's. `third` becomes the program's
    // descriptor 3 when it is not negative.
    Child(std::vector<std::string> command, std::vector<std::string> environment = {},
          int third = -1);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t id() const { return id_; }
    // How it ended (as waitpid says); nothing when it runs on.
    std::optional<int> WaitForEnd(std::chrono::milliseconds time);

private:
    pid_t id_ = 0;
    std::optional<int> status_;
};

// Whether a program of this name can be found.
bool HasProgram(const std::string& name);

// Runs a program to its end; what it printed.
std::string OutputOf(const std::string& command);

}  // namespace korvane::test
