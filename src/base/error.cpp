#include "base/error.h"

#include <utility>

#include "base/text.h"

namespace korvane {

Error::Error(int number, std::u16string description)
    : number_(number), description_(std::move(description)), utf8_(ToUtf8(description_)) {}

}  // namespace korvane
