// A program that writes down how it was started.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "bindings/posix/temp_folder.h"

namespace korvane::posix {

class Recorder {
public:
    // The program is `name` in `folder`; `more` are further lines of its script.
    Recorder(const std::filesystem::path& folder, const std::string& name,
             const std::string& more = "")
        : program_(folder / name), record_(folder / (name + ".record")) {
        const std::string part = record_.native() + ".part";
        WriteBytes(program_, "#!/bin/sh\n{ printf '%s\\0' \"$@\"\n" + more + "\n} > '" + part +
                                 "'\nmv '" + part + "' '" + record_.native() + "'\n");
        ::chmod(program_.c_str(), 0755);
    }

    const std::filesystem::path& program() const { return program_; }
    bool WasRun() const { return std::filesystem::exists(record_); }

    // Waits for the record and takes it away: what the program wrote.
    std::string Take() const {
        for (int k = 0; k < 5'000 && !WasRun(); ++k) ::usleep(1'000);
        if (!WasRun()) ADD_FAILURE() << program_ << " was not run";
        std::string record = ReadBytes(record_);
        std::filesystem::remove(record_);
        return record;
    }
    // The arguments, when it writes nothing else.
    std::vector<std::string> TakeArguments() const {
        std::istringstream record(Take());
        std::vector<std::string> arguments;
        for (std::string argument; std::getline(record, argument, '\0');) {
            arguments.push_back(argument);
        }
        return arguments;
    }

private:
    std::filesystem::path program_;
    std::filesystem::path record_;
};

}  // namespace korvane::posix
