#include "bindings/posix/help_viewer.h"

#include <algorithm>
#include <string_view>

#include "base/error.h"
#include "base/number.h"
#include "base/text.h"
#include "bindings/posix/spawn.h"

namespace korvane::posix {
namespace {

constexpr std::u16string_view kViewer = u"hh.exe ";
constexpr std::u16string_view kTopicOption = u"-mapid ";
constexpr std::u16string_view kHelpFile = u"Korvane Explorer.chm";

// Host paths separate by "\", also behind a folder that came from the system.
bool IsHelpFile(std::u16string_view path) {
    const auto name = AfterLast(path, u'\\');
    return name == kHelpFile && name.size() < path.size();
}

}  // namespace

std::optional<std::int32_t> HelpTopic(const std::u16string& commandLine) {
    std::u16string_view rest = commandLine;
    if (!StartsWith(rest, kViewer)) return std::nullopt;
    rest.remove_prefix(kViewer.size());
    std::int32_t topic = 0;
    bool isKnown = true;
    if (StartsWith(rest, kTopicOption)) {
        rest.remove_prefix(kTopicOption.size());
        const auto end = std::min(rest.find(u' '), rest.size());
        const auto number = ParseNumber(rest.substr(0, end));
        isKnown = number && *number >= 1 && *number <= INT32_MAX;
        if (isKnown) topic = static_cast<std::int32_t>(*number);
        isKnown = isKnown && NumberText(topic) == rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    // A path is written as it is: it may hold blanks and is not quoted.
    if (!isKnown || !IsHelpFile(rest)) {
        throw Error(kErrorInvalidCall, u"No help can be shown by " + commandLine);
    }
    return topic;
}

bool FilesWithHelp::Exists(const std::u16string& path) {
    return IsHelpFile(path) ? manual_.IsThere() : files_.Exists(path);
}

void ShellWithHelp::Start(const std::u16string& commandLine) {
    const auto topic = HelpTopic(commandLine);
    if (!topic) return shell_.Start(commandLine);
    SpawnDetached({opener_, manual_.Address(*topic)});
}

}  // namespace korvane::posix
