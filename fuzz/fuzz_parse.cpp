// Any text as a formula, in both modes: nothing crashes, hangs or reads outside
// the text, and the tree that comes out holds together.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "apps/command/lone_cell.h"
#include "base/text.h"

namespace {

using korvane::CElement;

// Stops the fuzzer where a tree does not hold together.
void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckBelow(const CElement& parent) {
    for (const auto& sub : parent.colSubs()) {
        Require(sub->clsParent() == &parent);
        Require(sub->lRootPosition() == sub->lGetRootPosition());
        Require(sub->lPos() >= 1);  // there are no names here
        Require(sub->lPos() - 1 + sub->lLength() <=
                static_cast<std::int32_t>(parent.sFormula().size()));
        CheckBelow(*sub);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static korvane::command::LoneCell cell;
    const std::u16string formula = korvane::ToUtf16({reinterpret_cast<const char*>(data), size});
    for (const bool everyFunction : {false, true}) {
        CElement root;
        std::u16string error;
        if (cell.Parse(formula, everyFunction, root, error)) {
            CheckBelow(root);
        } else {
            Require(!error.empty());
        }
    }
    return 0;
}
