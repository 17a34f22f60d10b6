#include "apps/command/office_document.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>
#include <system_error>

#include "apps/command/office_files.h"
#include "apps/report/exploration_json.h"
#include "base/text.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// Refuses what is no readable file, before an office is started for it.
void RequireFile(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) {
        throw CommandError(kNotFound, errno == ENOENT
                                          ? "no such file: " + path
                                          : "cannot read " + path + ": " + std::strerror(errno));
    }
    if (S_ISDIR(info.st_mode))
        throw CommandError(kNotFound, path + " is a directory, not a workbook");
    if (!S_ISREG(info.st_mode)) throw CommandError(kNotFound, path + " is not a file");
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        throw CommandError(kNotFound, "cannot read " + path + ": " + std::strerror(errno));
    close(file);
    if (info.st_size == 0) throw CommandError(kNotFound, path + " is empty, not a workbook");
}

// The office opens a copy with the same name: it may write to it (a document
// that is read-only refuses formulas without a word), and no lock file appears
// beside the user's.
fs::path Copy(const std::string& path, const PrivateFolder& folder) {
    const fs::path copy = folder.path() / "book" / fs::path(path).filename();
    std::error_code failed;
    fs::create_directories(copy.parent_path(), failed);
    fs::copy_file(path, copy, fs::copy_options::overwrite_existing, failed);
    if (failed) {
        throw CommandError(kNotFound, "cannot copy " + path + " for reading: " + failed.message());
    }
    fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write, failed);
    return copy;
}

}  // namespace

OfficeDocument::OfficeDocument(const std::string& path, const OfficeTimes& times,
                               const fs::path& component, int viewLink)
    : path_(path), times_(times) {
    RequireFile(path);
    process_ = std::make_unique<OfficeProcess>(
        FindOffice(), component.empty() ? FindComponent() : component, times, viewLink);
    Ask(Json{{"open", Copy(path, process_->folder()).string()}}.dump(), times_.open);
}

OfficeDocument::~OfficeDocument() = default;

ExplorationReport OfficeDocument::Explore(const std::u16string& cell, bool bEveryFunction,
                                          bool bPreciseCalc) {
    const Json request{{"explore", ToUtf8(cell)},
                       {"bEveryFunction", bEveryFunction},
                       {"bPreciseCalc", bPreciseCalc}};
    const std::string answer = Ask(request.dump(), times_.explore);
    try {
        return ReportFromJson(Json::parse(answer));
    } catch (const Json::exception& error) {
        throw CommandError(kHostLost,
                           std::string("LibreOffice's answer makes no sense: ") + error.what());
    }
}

std::vector<std::u16string> OfficeDocument::FormulaCells() {
    const std::string answer = Ask(Json{{"formulaCells", true}}.dump(), times_.open);
    std::vector<std::u16string> cells;
    try {
        const Json json = Json::parse(answer);
        for (const auto& cell : json.at("cells")) {
            cells.push_back(ToUtf16(cell.get_ref<const std::string&>()));
        }
    } catch (const Json::exception& error) {
        throw CommandError(kHostLost,
                           std::string("LibreOffice's answer makes no sense: ") + error.what());
    }
    return cells;
}

void OfficeDocument::ShowWindow(const WindowRequest& request) {
    Json json{{"window", ToUtf8(request.cell)}};
    if (request.bEveryFunction) json["bEveryFunction"] = *request.bEveryFunction;
    if (request.bPreciseCalc) json["bPreciseCalc"] = *request.bPreciseCalc;
    json["config"] = request.config.native();
    json["state"] = request.state.native();
    Ask(json.dump(-1, ' ', false, Json::error_handler_t::replace), std::nullopt);
}

// The answer's line; an answer that is an error is thrown.
std::string OfficeDocument::Ask(const std::string& request,
                                std::optional<std::chrono::milliseconds> time) {
    std::string answer = process_->Ask(request, time);
    constexpr std::string_view kError = "{\"error\":";
    if (!answer.starts_with(kError)) return answer;
    const Json json = Json::parse(answer, nullptr, false);
    const bool readable = json.is_object() && json.at("error").is_object();
    if (!readable) throw CommandError(kHostLost, "LibreOffice's answer makes no sense.");
    const Json& error = json.at("error");
    const int code = error.value("code", int{kHostLost});
    const bool known = code == kNotFound || code == kExplorationFailed;
    const std::string message = error.value("message", std::string());
    throw CommandError(known ? static_cast<ExitCode>(code) : kHostLost,
                       path_ + (message.starts_with("is ") ? " " : ": ") + message);
}

}  // namespace korvane::command
