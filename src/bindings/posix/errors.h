// The system's errors, as the house knows them.
#pragma once

#include <string_view>

#include "base/error.h"

namespace korvane::posix {

// What this binding adds to the core's numbers; of the same language.
enum FileErrorNumber : int {
    kErrorFileNotFound = 53,
    kErrorDiskFull = 61,
    kErrorPermissionDenied = 70,
    kErrorFileAccess = 75,  // any other failure
};

// The error for `code` (a value of errno). Its description says what failed:
// `what` (UTF-8, a path or a program), followed by the system's own words.
Error SystemError(int code, std::string_view what);

}  // namespace korvane::posix
