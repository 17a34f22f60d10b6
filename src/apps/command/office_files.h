// What an office process is started with: where the installation is, and the
// files of a private profile that make it load our component.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::command {

class PrivateFolder;

// The folder with the office's program files: what KORVANE_OFFICE names (the
// installation's folder or its program/), else the usual place. Throws
// CommandError kHostLost, saying what to install, when there is none.
std::filesystem::path FindOffice();

// The value of `key` in one of the office's start-up files; empty without it.
std::string StartupValue(const std::filesystem::path& file, std::string_view key);

// The component that belongs to this program (lib/korvane beside its own
// folder). Throws CommandError kHostLost when it is missing.
std::filesystem::path FindComponent();

// Writes into `folder` what makes the office of `program` start `component` with
// a profile of its own. Returns the arguments, the program's path first.
std::vector<std::string> PrepareOffice(const PrivateFolder& folder,
                                       const std::filesystem::path& program,
                                       const std::filesystem::path& component);

// This process's environment as the office process is to see it.
std::vector<std::string> OfficeEnvironment(const PrivateFolder& folder);

}  // namespace korvane::command
