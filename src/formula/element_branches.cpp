// IF and CHOOSE: their arguments become labelled branches, and the one that the
// host takes for the current values is marked.
#include "base/number.h"
#include "formula/element.h"
#include "formula/substr.h"

namespace korvane {
namespace {

// The arguments of a call whose name and "(" take `prefix` characters; the last
// character is the closing bracket.
std::vector<CSubstr> Arguments(std::u16string_view call, std::size_t prefix) {
    std::vector<CSubstr> parts;
    if (call.size() > prefix) {
        SplitArguments(call.substr(prefix, call.size() - prefix - 1), u",", parts, true);
    }
    return parts;
}

}  // namespace

void CElement::ParseIf() {
    constexpr std::int32_t kPrefix = 3;  // "IF("
    const auto parts = Arguments(sFormula_, kPrefix);
    bool decision = false;
    for (std::size_t k = 0; k < parts.size() && k < 3; ++k) {
        if (parts[k].sString.empty()) continue;  // an omitted branch
        const auto add = [&](ElementKind kind, bool chosen) -> CElement& {
            return AddSub(parts[k].sString, u"", parts[k].lPosition + kPrefix, kind,
                          chosen ? 1 : 0);
        };
        if (k == 0) {
            decision = TextToBoolean(add(kindIfCondition, false).sValue_);
        } else if (k == 1) {
            add(kindIfTrue, decision);
        } else {
            add(kindIfFalse, !decision);
        }
    }
}

void CElement::ParseChoose() {
    constexpr std::int32_t kPrefix = 7;  // "CHOOSE("
    const auto parts = Arguments(sFormula_, kPrefix);
    std::int32_t chosen = 0;
    for (std::size_t k = 0; k < parts.size(); ++k) {
        if (parts[k].sString.empty()) continue;
        const auto number = static_cast<std::int32_t>(k);
        const auto add = [&](ElementKind kind, std::int32_t tag) -> CElement& {
            return AddSub(parts[k].sString, u"", parts[k].lPosition + kPrefix, kind, tag);
        };
        if (k == 0) {
            const CElement& index = add(kindChooseIndex, 0);
            if (IsNumeric(index.sValue_)) chosen = TextToWhole(index.sValue_);
        } else {
            add(number == chosen ? kindChosenValue : kindOtherValue, number);
        }
    }
}

}  // namespace korvane
