#include "bindings/posix/command_line.h"

#include "base/text.h"

namespace korvane::posix {

std::vector<std::string> SplitCommandLine(std::u16string_view commandLine) {
    std::vector<std::string> arguments;
    bool quoted = false;
    bool within = false;  // an argument has begun, though it may still be empty
    for (const char ch : ToUtf8(commandLine)) {
        if (!quoted && (ch == ' ' || ch == '\t')) {
            within = false;
            continue;
        }
        if (!within) arguments.emplace_back();
        within = true;
        if (ch == '"') {
            quoted = !quoted;
        } else {
            arguments.back() += ch;
        }
    }
    return arguments;
}

}  // namespace korvane::posix
