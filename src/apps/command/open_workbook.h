// The way from the command to a real host.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "apps/command/document.h"

namespace korvane::command {

// Opens a workbook in a host of its own, which ends with the document. Throws
// CommandError: kNotFound for a file that is missing or cannot be read as a
// workbook, kHostLost when no host can be started. An exploration that takes
// longer than `cellTime` loses the host; nothing means for ever.
std::unique_ptr<Document> OpenWorkbook(
    const std::string& path, std::optional<std::chrono::milliseconds> cellTime = std::nullopt);

// In place of the user's settings; nothing: these count.
struct WindowModes {
    std::optional<bool> bEveryFunction;
    std::optional<bool> bPreciseCalc;
};

// Shows a cell of a workbook in a window and returns when all windows are
// closed. Throws CommandError as OpenWorkbook and Document::Explore do.
void ShowWorkbook(const std::string& path, const std::u16string& cell, const WindowModes& modes);

}  // namespace korvane::command
