#include "support/tree_text.h"

#include "base/text.h"

namespace korvane::test {
namespace {

void Append(const CElement& element, int depth, std::string& out) {
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
    out += ToUtf8(element.sName()) + " | " + ToUtf8(element.sFormula()) + " @" +
           std::to_string(element.lPos()) + " | " + ToUtf8(element.sLocation());
    if (element.rngRange()) out += "<" + ToUtf8(element.rngRange()->Address(host::kRelative)) + ">";
    out += " | " + ToUtf8(element.sValue()) + "\n";
    for (const auto& sub : element.colSubs()) Append(*sub, depth + 1, out);
}

}  // namespace

std::string TreeText(const CElement& root) {
    std::string out;
    Append(root, 0, out);
    return out;
}

}  // namespace korvane::test
