#include "bindings/view_link/failure.h"

#include <string>
#include <system_error>

#include "base/text.h"

namespace korvane::view_link {

Error SystemFailure(int code, std::string_view what) {
    std::string text(what);
    text += ": ";
    text += std::generic_category().message(code);
    return {kErrorApplication, ToUtf16(text)};
}

}  // namespace korvane::view_link
