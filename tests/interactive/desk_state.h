// What of the office's desk an add-in could change, for comparing.
#pragma once

#include <string>

namespace korvane::test {

// Menus, toolbar and pictures, keys, and notes of what stands in documents for a
// moment; line by line.
std::string DeskState();

}  // namespace korvane::test
