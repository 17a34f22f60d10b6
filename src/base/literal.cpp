#include "base/literal.h"

#include "base/number.h"
#include "base/text.h"

namespace korvane {
namespace {

// The content of a text literal that begins with a double quote.
std::optional<std::u16string> TextContent(std::u16string_view text) {
    if (text.size() < 2 || text.back() != u'"') return std::nullopt;
    std::u16string content;
    const std::u16string_view inner = text.substr(1, text.size() - 2);
    for (std::size_t at = 0; at < inner.size(); ++at) {
        if (inner[at] == u'"' && (++at == inner.size() || inner[at] != u'"')) return std::nullopt;
        content += inner[at];
    }
    return content;
}

}  // namespace

std::optional<Value> LiteralValue(std::u16string_view text) {
    if (text.empty()) return std::nullopt;
    if (text.front() == u'"') {
        auto content = TextContent(text);
        if (!content) return std::nullopt;
        return Value(std::move(*content));
    }
    const char16_t first = FoldChar(text.front());
    if (first > u'9' && first != u't' && first != u'f') return std::nullopt;  // most texts
    if (EqualIgnoringCase(text, u"TRUE")) return Value(true);
    if (EqualIgnoringCase(text, u"FALSE")) return Value(false);
    if (const auto number = ParseNumber(text)) return Value(*number);
    return std::nullopt;
}

}  // namespace korvane
