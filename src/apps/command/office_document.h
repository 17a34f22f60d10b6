// A workbook in an office process of its own.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/command/document.h"
#include "apps/command/office_process.h"

namespace korvane::command {

class OfficeDocument : public Document {
public:
    // Starts an office with `component` (empty: the one beside this program) and
    // opens a private copy of the workbook in it; the file itself is only read.
    // Throws CommandError: kNotFound for a file that is missing or no workbook,
    // kHostLost without an office.
    // The office inherits `viewLink`, the socket of a view, unless it is negative.
    explicit OfficeDocument(const std::string& path, const OfficeTimes& times = {},
                            const std::filesystem::path& component = {}, int viewLink = -1);
    ~OfficeDocument() override;

    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override;
    std::vector<std::u16string> FormulaCells() override;

    struct WindowRequest {
        std::u16string cell;
        std::optional<bool> bEveryFunction;  // nothing: as the user's settings say
        std::optional<bool> bPreciseCalc;
        std::filesystem::path config;  // the user's folders; empty for none
        std::filesystem::path state;
    };
    // Shows a cell in windows of the view and returns when all are closed; once
    // only. Throws CommandError: as Explore does, kHostLost also when there is no
    // view, kExplorationFailed when no window came about.
    void ShowWindow(const WindowRequest& request);

    const OfficeProcess& process() const { return *process_; }

private:
    std::string Ask(const std::string& request, std::optional<std::chrono::milliseconds> time);

    std::string path_;
    OfficeTimes times_;
    std::unique_ptr<OfficeProcess> process_;
};

}  // namespace korvane::command
