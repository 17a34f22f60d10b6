// The kinds of addresses that the platform's services take.
#pragma once

#include <initializer_list>
#include <string_view>

#include "base/text.h"

namespace korvane::scripted {

// Whether the address begins with one of the schemes ("http:"), in any case.
inline bool HasScheme(std::u16string_view address,
                      std::initializer_list<std::u16string_view> schemes) {
    for (const auto scheme : schemes) {
        if (EqualIgnoringCase(address.substr(0, scheme.size()), scheme)) return true;
    }
    return false;
}

}  // namespace korvane::scripted
