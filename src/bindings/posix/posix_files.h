// Files of the native system under the host's paths.
#pragma once

#include <filesystem>
#include <string>

#include "bindings/posix/folders.h"
#include "bindings/posix/host_paths.h"
#include "platform/files.h"

namespace korvane::posix {

// A path that does not begin at a root of this system names no file: a relative
// one, one with a drive letter.
class PosixFiles : public platform::Files {
public:
    // `addInFolder` is where the add-in was installed (native; empty for none).
    // Where it may not be written now, at the start, every line for a file below
    // it goes to the same place below the folder for state instead.
    explicit PosixFiles(const Folders& folders, const std::filesystem::path& addInFolder = {});

    // A line stays one line: each line break within it becomes a blank. A new
    // file is for the user alone. Missing folders are made below the folder for
    // state only.
    void AppendLine(const std::u16string& path, const std::u16string& line) override;
    // Looks below the add-in folder itself, whether it may be written or not.
    bool Exists(const std::u16string& path) override;
    // Empty when the user has no home; AppendLine then raises.
    std::u16string StateFolder() override;

    // Where a line for this path goes. Empty when there is no such place.
    std::filesystem::path PlaceToWrite(const std::u16string& path) const;

private:
    std::filesystem::path state_;
    std::filesystem::path addIn_;
    HostPaths paths_;
    bool addInIsReadOnly_;
};

}  // namespace korvane::posix
