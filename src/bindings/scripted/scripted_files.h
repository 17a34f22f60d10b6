// Files in memory.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/files.h"

namespace korvane::scripted {

class ScriptedFiles : public platform::Files {
public:
    explicit ScriptedFiles(std::shared_ptr<Accesses> accesses) : accesses_(std::move(accesses)) {}

    // Raises 70 ("Permission denied") below a folder of `readOnly`.
    void AppendLine(const std::u16string& path, const std::u16string& line) override;
    // False, and no error, where it is made to fail.
    bool Exists(const std::u16string& path) override;
    std::u16string StateFolder() override;

    // The lines of every file that was written, by its path. Paths are compared
    // as they stand.
    std::map<std::u16string, std::vector<std::u16string>> lines;
    std::set<std::u16string> existing;  // files that are there, whatever they hold
    std::set<std::u16string> readOnly;  // folders, each ending in "\"
    std::u16string stateFolder = u"/state/korvane\\";

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
