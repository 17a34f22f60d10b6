// Folders and files for one test.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bindings/posix/folders.h"

namespace korvane::posix {

// A new folder that goes with this object.
class TempFolder {
public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "korvane-XXXXXX").native();
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
        // For tests that lay down root's rights (see child.h).
        if (::geteuid() == 0 && ::chown(path_.c_str(), 65534, 65534) != 0) std::abort();
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    Folders folders() const { return {path_ / "config", path_ / "state"}; }

private:
    std::filesystem::path path_;
};

inline void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().native());
    }
    std::sort(names.begin(), names.end());
    return names;
}

inline unsigned ModeOf(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

// An environment variable that is as before when this object goes.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before, had_ = true;
        if (value == nullptr) {
            ::unsetenv(name);
        } else {
            ::setenv(name, value, 1);
        }
    }
    ~Variable() {
        if (had_) {
            ::setenv(name_, before_.c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::string before_;
    bool had_ = false;
};

}  // namespace korvane::posix
