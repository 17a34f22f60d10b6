// The manual in place of a compiled help file, which nothing here can show: the
// file counts as there when the manual is, and the command line that shows it
// opens a page of the manual instead.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "bindings/posix/manual.h"
#include "platform/files.h"
#include "platform/shell.h"

namespace korvane::posix {

// The topic that a help viewer is to show, 0 for the start page; nothing for a
// command line that starts no help viewer. Raises for one with other arguments
// than "-mapid", or for another help file than the add-in's.
std::optional<std::int32_t> HelpTopic(const std::u16string& commandLine);

// The files of a system, the add-in's help file among them.
class FilesWithHelp : public platform::Files {
public:
    // Both outlive this.
    FilesWithHelp(platform::Files& files, const Manual& manual) : files_(files), manual_(manual) {}

    void AppendLine(const std::u16string& path, const std::u16string& line) override {
        files_.AppendLine(path, line);
    }
    // In whatever folder: the add-in looks in its own alone.
    bool Exists(const std::u16string& path) override;
    std::u16string StateFolder() override { return files_.StateFolder(); }

private:
    platform::Files& files_;
    const Manual& manual_;
};

// A system's shell, with a help viewer.
class ShellWithHelp : public platform::Shell {
public:
    // Both outlive this. `opener` is the program that opens a page, its only
    // argument.
    ShellWithHelp(platform::Shell& shell, const Manual& manual, std::string opener = "xdg-open")
        : shell_(shell), manual_(manual), opener_(std::move(opener)) {}

    void Open(const std::u16string& address, std::int64_t owner) override {
        shell_.Open(address, owner);
    }
    // The desktop decides what shows the page, and whether that takes the focus.
    void Start(const std::u16string& commandLine) override;

private:
    platform::Shell& shell_;
    const Manual& manual_;
    std::string opener_;
};

}  // namespace korvane::posix
