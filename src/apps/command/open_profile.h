// The profile that the user's office works with.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace korvane::command {

// An environment: the value of a variable, empty without it.
using Variables = std::function<std::string(std::string_view)>;

// This process's.
Variables OwnVariables();

// The folder of the profile that the office of `program` takes when nothing but
// its environment says another one.
std::filesystem::path UsualProfile(const std::filesystem::path& program,
                                   const Variables& variables);

// Whether the add-in is there as an extension: in the profile, or for all users
// of the office. The office refuses to start with a component that it is given
// twice.
bool HasExtension(const std::filesystem::path& program, const std::filesystem::path& profile);

// The path that a file URL means; empty for another text.
std::filesystem::path PathOfUrl(std::string_view url);

}  // namespace korvane::command
