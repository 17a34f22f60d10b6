#include "files_under_test.h"

#include <poll.h>
#include <signal.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>

namespace korvane::command::testing {

namespace fs = std::filesystem;

TestFolder::TestFolder() {
    std::string pattern = (fs::temp_directory_path() / "office-test-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
    temporary_ = path_ / "temporary";
    fs::create_directory(temporary_);
    setenv("TMPDIR", temporary_.c_str(), 1);
}

TestFolder::~TestFolder() {
    unsetenv("TMPDIR");
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TestFolder::Write(const std::string& name, const std::string& content) const {
    const fs::path file = path_ / name;
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
}

bool TestFolder::IsClean() const {
    for (int k = 0; k < 300; ++k) {
        if (fs::is_empty(temporary_)) return true;
        poll(nullptr, 0, 20);
    }
    return false;
}

bool Ends(int process) {
    for (int k = 0; k < 300; ++k) {
        if (kill(process, 0) != 0 && errno == ESRCH) return true;
        poll(nullptr, 0, 20);
    }
    return false;
}

namespace {

std::string Flat(const std::string& tables) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
           "<office:document xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
           " xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\""
           " xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\""
           " xmlns:of=\"urn:oasis:names:tc:opendocument:xmlns:of:1.2\" office:version=\"1.3\""
           " office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\">"
           "<office:body><office:spreadsheet>" +
           tables + "</office:spreadsheet></office:body></office:document>";
}

std::string Number(const char* value) {
    return std::string("<table:table-cell office:value-type=\"float\" office:value=\"") + value +
           "\"/>";
}

std::string Formula(const std::string& formula) {
    return "<table:table-cell table:formula=\"of:" + formula + "\"/>";
}

std::string Row(const std::string& cells) {
    return "<table:table-row>" + cells + "</table:table-row>";
}

}  // namespace

std::string SmallWorkbook() {
    return Flat(
        "<table:table table:name=\"Data\">" +
        Row(Number("1") + Number("10") + Formula("=SUM([.A1:.A3])*[.B1]")) +
        Row(Number("2") + Number("20")) + Row(Number("3") + Number("30")) +
        "</table:table><table:table table:name=\"My Sheet\">" + Row(Number("5")) +
        "</table:table><table:named-expressions><table:named-range table:name=\"Rate\""
        " table:base-cell-address=\"$Data.$A$1\" table:cell-range-address=\"$'My Sheet'.$A$1\"/>"
        "</table:named-expressions>");
}

std::string WorkbookWith(const std::string& formula) {
    return Flat("<table:table table:name=\"Data\">" + Row(Formula(formula)) + "</table:table>");
}

}  // namespace korvane::command::testing
