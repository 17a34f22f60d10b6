#include "formula/error_text.h"

#include "base/number.h"
#include "host/application.h"
#include "host/range.h"

namespace korvane {
std::u16string sErrorText(const Value& value, host::Application& application) {
    if (const auto* text = value.Text()) return *text;
    if (const auto* number = value.Number()) return NumberText(*number);
    if (const auto* code = value.AsError()) return ErrorName(*code);
    if (const auto* flag = value.Boolean()) return *flag ? u"True" : u"False";
    if (const auto* date = value.AsDate()) return application.DateText(date->serial);
    if (const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject())) {
        // Asked first: the values of a block can be a million, for no text.
        if (range->CountLarge() == 1) return sErrorText(range->Value(), application);
    }
    return {};
}

bool bIsErrorText(std::u16string_view s) { return IsErrorName(s); }

}  // namespace korvane
