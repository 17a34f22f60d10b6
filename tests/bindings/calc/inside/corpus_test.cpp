// Real workbooks: every formula of them is explored, and nothing in them changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/report/exploration.h"
#include "base/text.h"
#include "bindings/calc/formula_cells.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace fs = std::filesystem;

// Beyond this the sample would take minutes.
constexpr std::uintmax_t kLargestSample = 60'000;
constexpr std::size_t kSampleStep = 6;

// KORVANE_SWEEP=all takes every file, large ones too; otherwise a sample.
std::vector<fs::path> Workbooks() {
    const char* const folder = std::getenv("KORVANE_CORPUS");
    const fs::path workbooks = fs::path(folder ? folder : KORVANE_CORPUS) / "workbooks";
    std::vector<fs::path> files;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(workbooks, missing)) {
        const auto ending = entry.path().extension();
        if (ending == ".xlsx" || ending == ".xlsm") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    const char* const sweep = std::getenv("KORVANE_SWEEP");
    if (sweep && std::string(sweep) == "all") return files;
    std::vector<fs::path> sample;
    for (std::size_t k = 0; k < files.size(); k += kSampleStep) {
        if (fs::file_size(files[k]) <= kLargestSample) sample.push_back(files[k]);
    }
    return sample;
}

std::size_t ExploreAll(OpenBook& book, const std::vector<std::u16string>& cells, bool precise) {
    std::size_t explorations = 0;
    for (const bool functions : {true, false}) {
        for (const auto& cell : cells) {
            const auto range = book.Cell(cell);
            range->Select();
            const auto report = korvane::Explore(book.application(), range, functions, precise);
            ++explorations;
            EXPECT_TRUE(report.ok || !report.log.empty()) << ToUtf8(cell);
            EXPECT_FALSE(report.formula.empty()) << ToUtf8(cell);
        }
    }
    return explorations;
}

TEST(Corpus, EveryFormulaIsExploredAndNothingChanges) {
    const auto files = Workbooks();
    if (files.empty()) GTEST_SKIP() << "no workbooks in the folder that KORVANE_CORPUS names";
    std::size_t explorations = 0;
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename().string());
        std::printf("%s\n", file.filename().c_str());
        // As the program does: some files ask for something when they are read-only.
        const fs::path copy = fs::temp_directory_path() / file.filename();
        fs::copy_file(file, copy, fs::copy_options::overwrite_existing);
        fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write);
        OpenBook book(copy.string());
        const auto cells = FormulaCells(book.application().document());
        // Calc gives some cells a number format when it first calculates them, whoever
        // looks: so the comparison begins behind a look.
        book.Snapshot();
        std::string before = book.Snapshot();
        explorations += ExploreAll(book, cells, false);
        EXPECT_EQ(Difference(before, book.Snapshot()), "");
        // What the file holds may be another program's results, and Calc calculates a
        // cell that is written and put back, with those that depend on it.
        book.CalculateAll();
        book.Snapshot();
        before = book.Snapshot();
        explorations += ExploreAll(book, cells, true);
        EXPECT_EQ(Difference(before, book.Snapshot()), "");
    }
    std::printf("%zu workbooks, %zu explorations\n", files.size(), explorations);
}

}  // namespace
}  // namespace korvane::calc::testing
