// The way from the command to a real host.
#pragma once

#include <memory>
#include <string>

#include "apps/command/document.h"

namespace korvane::command {

// Opens a workbook in a host of its own, which ends with the document. Throws
// CommandError: kNotFound for a file that is missing or cannot be read as a
// workbook, kHostLost when no host can be started.
std::unique_ptr<Document> OpenWorkbook(const std::string& path);

}  // namespace korvane::command
