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

}  // namespace korvane::command
