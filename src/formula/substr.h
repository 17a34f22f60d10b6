// The arguments of a function call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

// One argument of a split argument list.
struct CSubstr {
    std::u16string sString;      // as written, blanks included
    std::int32_t lPosition = 0;  // of its first character in the text that was split
};

// Appends the arguments of `sString` to `colParts`, in order. It is split at
// each character of `sSeparators` that stands outside quotes and brackets. With
// `bKeepEmpty` an argument between two separators keeps its place though it is
// empty; an empty last one is never added. Raises kErrorInvalidCall when a
// quote stays open.
void SplitArguments(std::u16string_view sString, std::u16string_view sSeparators,
                    std::vector<CSubstr>& colParts, bool bKeepEmpty);

}  // namespace korvane
