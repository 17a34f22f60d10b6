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
    explicit OfficeDocument(const std::string& path, const OfficeTimes& times = {},
                            const std::filesystem::path& component = {});
    ~OfficeDocument() override;

    ExplorationReport Explore(const std::u16string& cell, bool bEveryFunction,
                              bool bPreciseCalc) override;
    std::vector<std::u16string> FormulaCells() override;

    const OfficeProcess& process() const { return *process_; }

private:
    std::string Ask(const std::string& request, std::optional<std::chrono::milliseconds> time);

    std::string path_;
    OfficeTimes times_;
    std::unique_ptr<OfficeProcess> process_;
};

}  // namespace korvane::command
