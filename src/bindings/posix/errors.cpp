#include "bindings/posix/errors.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "base/text.h"

namespace korvane::posix {
namespace {

int NumberOf(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR: return kErrorFileNotFound;
        case ENOSPC:
        case EDQUOT: return kErrorDiskFull;
        case EACCES:
        case EPERM:
        case EROFS: return kErrorPermissionDenied;
        case ENOMEM: return kErrorOutOfMemory;
        default: return kErrorFileAccess;
    }
}

}  // namespace

Error SystemError(int code, std::string_view what) {
    std::string text(what);
    text += ": ";
    text += std::generic_category().message(code);
    return {NumberOf(code), ToUtf16(text)};
}

}  // namespace korvane::posix
