#include "apps/command/script_file.h"

#include <sys/stat.h>

#include <fstream>
#include <iostream>

#include "apps/command/document.h"
#include "apps/command/terminal.h"
#include "bindings/scripted/load_document.h"

namespace korvane::command {
namespace {

// Scripted documents are written by people and tools for one report; what is
// larger is none.
constexpr std::size_t kLargestScript = std::size_t{256} << 20;

// Wrong documents end the command like missing files.
template <typename Read>
auto Translated(const std::string& path, Read read) {
    try {
        return read();
    } catch (const scripted::DocumentError& error) {
        throw CommandError(kNotFound,
                           path + " is not a scripted document: " + OneLine(error.what()));
    }
}

std::string ReadScript(const std::string& path) {
    struct stat info {};
    if (path != "-" && stat(path.c_str(), &info) != 0) {
        throw CommandError(kNotFound, "no such file: " + path);
    }
    if (path != "-" && S_ISDIR(info.st_mode)) {
        throw CommandError(kNotFound, path + " is a directory, not a scripted document");
    }
    std::ifstream file;
    if (path != "-") file.open(path, std::ios::binary);
    std::istream& in = path == "-" ? std::cin : file;
    if (!in) throw CommandError(kNotFound, "cannot read " + path);
    std::string text;
    std::vector<char> buffer(std::size_t{1} << 16);
    while (in && text.size() <= kLargestScript) {
        in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        text.append(buffer.data(), static_cast<std::size_t>(in.gcount()));
    }
    if (text.size() > kLargestScript) {
        throw CommandError(kNotFound,
                           path + " is too large for a scripted document (256 MiB at most)");
    }
    return text;
}

}  // namespace

std::vector<nlohmann::json> ReadDocuments(const std::string& path) {
    return Translated(path, [&] { return scripted::SplitDocuments(ReadScript(path)); });
}

scripted::Model LoadScript(const std::string& path, const nlohmann::json& document,
                           const std::string& which) {
    return Translated(path + which, [&] { return scripted::LoadDocument(document); });
}

scripted::Model LoadOnlyScript(const std::string& path, const std::string& who) {
    const auto documents = ReadDocuments(path);
    if (documents.size() != 1) throw CommandError(kUsage, who + " takes one scripted document");
    return LoadScript(path, documents.front());
}

}  // namespace korvane::command
