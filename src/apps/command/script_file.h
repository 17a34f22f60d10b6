// Files with scripted documents.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bindings/scripted/model.h"

namespace korvane::command {

// The documents of a file, or of standard input for "-". Throws CommandError
// kNotFound for what is no such file.
std::vector<nlohmann::json> ReadDocuments(const std::string& path);

// `which` says which of the file's documents it is; empty for an only one.
// Throws CommandError kNotFound.
scripted::Model LoadScript(const std::string& path, const nlohmann::json& document,
                           const std::string& which = {});

// The file's document. Throws CommandError: kUsage, beginning with `who`, when
// there are several.
scripted::Model LoadOnlyScript(const std::string& path, const std::string& who);

}  // namespace korvane::command
