#include "base/value.h"

#include <algorithm>
#include <array>

namespace korvane {
namespace {

constexpr std::u16string_view kUnknownError = u"#ERROR!";

struct NamedError {
    ErrorCode code;
    std::u16string_view name;
};
constexpr std::array kErrorNames{
    NamedError{ErrorCode::kDiv0, u"#DIV/0!"},  NamedError{ErrorCode::kNA, u"#N/A"},
    NamedError{ErrorCode::kName, u"#NAME?"},   NamedError{ErrorCode::kNull, u"#NULL!"},
    NamedError{ErrorCode::kNum, u"#NUM!"},     NamedError{ErrorCode::kRef, u"#REF!"},
    NamedError{ErrorCode::kValue, u"#VALUE!"},
};

}  // namespace

std::u16string ErrorName(ErrorCode code) {
    const auto* const found =
        std::find_if(kErrorNames.begin(), kErrorNames.end(),
                     [&](const NamedError& entry) { return entry.code == code; });
    return std::u16string(found == kErrorNames.end() ? kUnknownError : found->name);
}

bool IsErrorName(std::u16string_view text) {
    if (text.empty() || text.front() != u'#') return false;
    return text == kUnknownError ||
           std::any_of(kErrorNames.begin(), kErrorNames.end(),
                       [&](const NamedError& entry) { return entry.name == text; });
}

Value::Value(Array array) : held_(std::make_shared<const Array>(std::move(array))) {}

const Array* Value::AsArray() const {
    const auto* held = std::get_if<std::shared_ptr<const Array>>(&held_);
    return held ? held->get() : nullptr;
}

ObjectPtr Value::AsObject() const {
    const auto* held = std::get_if<ObjectPtr>(&held_);
    return held ? *held : nullptr;
}

}  // namespace korvane
