#include "apps/command/lone_cell.h"

namespace korvane::command {

void LoneCell::LastError::Report(const char16_t* /*module*/, const char16_t* /*procedure*/,
                                 const Error& error, bool /*isEntryPoint*/) {
    description = error.description();
}

bool LoneCell::Parse(std::u16string formula, bool bEveryFunction, CElement& root,
                     std::u16string& error) {
    host_.SetFormula(std::move(formula));
    options_.bEveryFunction = bEveryFunction;
    if (root.bInitRoot(options_)) return true;
    error = lastError_.description;
    return false;
}

std::int64_t CountElements(const CElement& element) {
    std::int64_t count = 1;
    for (const auto& sub : element.colSubs()) count += CountElements(*sub);
    return count;
}

}  // namespace korvane::command
