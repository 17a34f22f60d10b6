// A folder of our own for the time of one office process.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace korvane::command {

// Made in the system's folder for temporary files, readable by nobody else, and
// removed with everything in it when this object goes.
class PrivateFolder {
public:
    // Throws CommandError kHostLost when no folder can be made.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    // Writes a file below the folder, making the folders on the way. Throws
    // CommandError kHostLost when that fails (the disk is full).
    void Write(const std::filesystem::path& file, std::string_view content) const;

private:
    std::filesystem::path path_;
};

// A path as a file URL, every byte that needs it escaped.
std::string FileUrl(const std::filesystem::path& path);

}  // namespace korvane::command
