// Command lines as people write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::posix {

// The program and its arguments, in UTF-8. Blanks and tabs separate them, except
// between double quotes, which go ("a b"c is a bc, "" is an empty argument). A
// quote that is not closed reaches to the end. Nothing else has a meaning: no
// backslash, no single quote, no variable, no pattern.
std::vector<std::string> SplitCommandLine(std::u16string_view commandLine);

}  // namespace korvane::posix
