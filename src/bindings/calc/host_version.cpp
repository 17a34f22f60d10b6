#include "bindings/calc/host_version.h"

#include <algorithm>

namespace korvane::calc {

std::u16string HostVersion(const std::u16string& office) {
    const auto isDigit = [](char16_t ch) { return ch >= u'0' && ch <= u'9'; };
    const auto digits = std::find_if_not(office.begin(), office.end(), isDigit) - office.begin();
    return digits < 2 ? office : u"0." + office;
}

}  // namespace korvane::calc
