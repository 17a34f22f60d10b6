// What the output looks like: colours, width, and texts cut to it.
#pragma once

#include <string>
#include <string_view>

namespace korvane::command {

// How standard output is to be written.
struct Style {
    bool decorated = false;  // box drawing and colours: a terminal
    int width = 0;           // columns of the terminal; 0: as wide as it gets
};

// Of the terminal on standard output; plain when it is none, or when NO_COLOR or
// TERM=dumb ask for it.
Style DetectStyle();

// How many columns a UTF-8 text takes, wide characters as two and combining ones
// as none. Needs a UTF-8 character locale (see main).
int DisplayWidth(std::string_view text);

// `text` on one line and harmless for a terminal: line breaks and tabs become
// blanks, other control characters U+FFFD.
std::string OneLine(std::string_view text);

// `text` cut to at most `width` columns, with "…" at the end when it was longer.
std::string CutToWidth(const std::string& text, int width);

}  // namespace korvane::command
