// Files and folders for tests that start an office.
#pragma once

#include <filesystem>
#include <string>

namespace korvane::command::testing {

// A folder of the test's own, in which the program also makes its temporary
// ones: what is left behind shows.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    // Writes a file and returns its path.
    std::string Write(const std::string& name, const std::string& content) const;
    std::filesystem::path path() const { return path_; }
    // Whether nothing of the program is left in the temporary place; waits a
    // little for it.
    bool IsClean() const;

private:
    std::filesystem::path path_;
    std::filesystem::path temporary_;
};

// A workbook with the sheets Data and 'My Sheet'; Data!C1 is =SUM(A1:A3)*B1 (60).
std::string SmallWorkbook();
// A flat workbook with one sheet, Data, whose cell A1 has this formula (in the
// office's file spelling).
std::string WorkbookWith(const std::string& formula);

// Whether the process ends within some seconds.
bool Ends(int process);

}  // namespace korvane::command::testing
