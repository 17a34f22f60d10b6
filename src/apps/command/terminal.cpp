#include "apps/command/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <cwchar>

#include "base/text.h"

namespace korvane::command {
namespace {

// Calls `visit(bytes, columns)` for each character of a UTF-8 text.
template <typename Visit>
void ForEachCharacter(std::string_view text, Visit visit) {
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        while (at + length < text.size() &&
               (static_cast<unsigned char>(text[at + length]) & 0xC0) == 0x80) {
            ++length;
        }
        const std::string_view bytes = text.substr(at, length);
        const std::u16string units = ToUtf16(bytes);
        auto code = static_cast<wchar_t>(units.empty() ? 0 : units[0]);
        if (units.size() == 2) {
            code =
                static_cast<wchar_t>(0x10000 + ((units[0] - 0xD800) << 10) + (units[1] - 0xDC00));
        }
        const int columns = ::wcwidth(code);
        visit(bytes, columns < 0 ? 1 : columns);
        at += length;
    }
}

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

}  // namespace

Style DetectStyle() {
    Style style;
    if (isatty(STDOUT_FILENO) == 0) return style;
    const char* term = std::getenv("TERM");
    style.decorated = !IsSet("NO_COLOR") && !(term && std::string_view(term) == "dumb");
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        style.width = size.ws_col;
    }
    return style;
}

int DisplayWidth(std::string_view text) {
    int width = 0;
    ForEachCharacter(text, [&](std::string_view, int columns) { width += columns; });
    return width;
}

std::string OneLine(std::string_view text) {
    // Broken sequences become U+FFFD first: a lone byte 9B is a command to some
    // terminals.
    const std::string valid = ToUtf8(ToUtf16(text));
    std::string line;
    ForEachCharacter(valid, [&](std::string_view bytes, int) {
        const auto first = static_cast<unsigned char>(bytes.front());
        if (first == '\n' || first == '\t') {
            line += ' ';
        } else if (first < 0x20 || first == 0x7F ||
                   (first == 0xC2 && bytes.size() == 2 &&
                    static_cast<unsigned char>(bytes[1]) < 0xA0)) {
            line += "\xEF\xBF\xBD";
        } else {
            line += bytes;
        }
    });
    return line;
}

std::string CutToWidth(const std::string& text, int width) {
    if (DisplayWidth(text) <= width) return text;
    std::string cut;
    int used = 0;
    bool full = false;
    ForEachCharacter(text, [&](std::string_view bytes, int columns) {
        full = full || used + columns > width - 1;
        if (full) return;
        cut += bytes;
        used += columns;
    });
    return width > 0 ? cut + "…" : cut;
}

}  // namespace korvane::command
