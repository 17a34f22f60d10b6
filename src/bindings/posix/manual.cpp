#include "bindings/posix/manual.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/error.h"
#include "base/number.h"
#include "base/text.h"

namespace korvane::posix {
namespace {

namespace fs = std::filesystem;

constexpr const char* kStartPage = "index.html";
constexpr const char* kTopics = "topics.txt";
constexpr std::string_view kPageEnding = ".html";

// A to Z, a to z, 0 to 9, "-" and "_": what needs no escape anywhere.
bool IsPlain(char ch) {
    return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') || (ch >= '0' && ch <= '9') ||
           ch == '-' || ch == '_';
}

bool IsPlainName(std::string_view name) {
    const auto isPart = [](char ch) { return IsPlain(ch) || ch == '.'; };
    return !name.empty() && IsPlain(name.front()) && std::all_of(name.begin(), name.end(), isPart);
}

// "page.html" or "page.html#place", which no opener takes for anything else.
bool IsPage(std::string_view page) {
    const auto mark = page.find('#');
    if (mark != std::string_view::npos && !IsPlainName(page.substr(mark + 1))) return false;
    const std::string_view name = page.substr(0, mark);
    return IsPlainName(name) && name.size() > kPageEnding.size() &&
           name.substr(name.size() - kPageEnding.size()) == kPageEnding;
}

bool IsFile(const fs::path& path) {
    std::error_code failed;
    return fs::is_regular_file(path, failed);
}

std::string Escaped(const std::string& path) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char ch : path) {
        const auto byte = static_cast<unsigned char>(ch);
        if (IsPlain(ch) || ch == '.' || ch == '/') {
            escaped += ch;
        } else {
            escaped += {'%', kDigits[byte / 16], kDigits[byte % 16]};
        }
    }
    return escaped;
}

// The page for the topic; empty when the list has none.
std::string PageOf(std::int32_t topic, const fs::path& list) {
    const std::string wanted = ToUtf8(NumberText(topic));
    std::ifstream file(list, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto blank = line.find(' ');
        if (blank != std::string::npos && line.substr(0, blank) == wanted) {
            return line.substr(blank + 1);
        }
    }
    return {};
}

[[noreturn]] void RaiseNoTopic(std::int32_t topic) {
    throw Error(kErrorApplication, u"The manual has no topic " + NumberText(topic));
}

}  // namespace

bool Manual::IsThere() const { return !folder_.empty() && IsFile(folder_ / kStartPage); }

std::string Manual::Address(std::int32_t topic) const {
    const std::string page = topic <= 0 ? kStartPage : PageOf(topic, folder_ / kTopics);
    if (folder_.empty() || !IsPage(page)) RaiseNoTopic(topic);
    const auto mark = std::min(page.find('#'), page.size());
    std::error_code failed;
    const fs::path file = fs::absolute(folder_, failed) / page.substr(0, mark);
    if (failed || !IsFile(file)) RaiseNoTopic(topic);
    return "file://" + Escaped(file.lexically_normal().native()) + page.substr(mark);
}

}  // namespace korvane::posix
