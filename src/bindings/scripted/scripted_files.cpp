#include "bindings/scripted/scripted_files.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"

namespace korvane::scripted {
namespace {

constexpr int kErrorPermissionDenied = 70;

}  // namespace

void ScriptedFiles::AppendLine(const std::u16string& path, const std::u16string& line) {
    accesses_->Enter("Files.AppendLine", path);
    if (std::any_of(readOnly.begin(), readOnly.end(),
                    [&](const auto& folder) { return StartsWith(path, folder); })) {
        throw Error(kErrorPermissionDenied, u"Permission denied");
    }
    lines[path].push_back(line);
}

bool ScriptedFiles::Exists(const std::u16string& path) {
    try {
        accesses_->Enter("Files.Exists", path);
    } catch (const Error&) {
        return false;  // it cannot be found out
    }
    return lines.contains(path) || existing.contains(path);
}

std::u16string ScriptedFiles::StateFolder() {
    accesses_->Enter("Files.StateFolder");
    return stateFolder;
}

}  // namespace korvane::scripted
