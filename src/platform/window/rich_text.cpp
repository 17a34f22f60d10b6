#include "platform/window/rich_text.h"

#include <algorithm>

namespace korvane::platform {

void RichText::SetText(const std::u16string& text) {
    // Written even when the text is the same: its formatting goes.
    const TextSpan before = Selection();
    Make(PropertySet{WindowNumber(), Id(), Property::kText, text});
    if (Selection() != before && onSelChange) onSelChange();
}

void RichText::Select(TextSpan span, Source source) {
    const auto size = static_cast<std::int32_t>(Text().size());
    span.start = std::clamp(span.start, 0, size);
    span.length = std::clamp(span.length, 0, size - span.start);
    const bool changed = Write(Property::kSelection, span, source);
    // The user's click counts wherever the caret was before.
    if ((changed || source == Source::kView) && onSelChange) onSelChange();
}

void RichText::SetSelStart(std::int32_t start) { Select({start, 0}, Source::kSystem); }

void RichText::SetSelLength(std::int32_t length) { Select({SelStart(), length}, Source::kSystem); }

void RichText::SetSelection(TextSpan span) { Select(span, Source::kSystem); }

template <class Alter>
void RichText::AlterSelected(Alter alter) {
    const TextSpan selected = Selection();
    const std::int32_t end = selected.start + selected.length;
    for (std::int32_t at = selected.start; at < end;) {
        // The runs are other ones after each change: look them up anew.
        const auto& runs = Runs();
        const auto next = std::upper_bound(
            runs.begin(), runs.end(), at,
            [](std::int32_t place, const TextRun& run) { return place < run.start; });
        const std::int32_t stop = next == runs.end() ? end : std::min(end, next->start);
        TextLook look = (next - 1)->look;
        const TextLook before = look;
        alter(look);
        if (look != before) {
            Make(TextFormatted{WindowNumber(), Id(), {at, stop - at}, look});
        }
        at = stop;
    }
}

void RichText::SetSelBold(bool bold) {
    AlterSelected([bold](TextLook& look) { look.bold = bold; });
}

void RichText::SetSelUnderline(bool underline) {
    AlterSelected([underline](TextLook& look) { look.underline = underline; });
}

void RichText::SetSelColour(Colour colour) {
    AlterSelected([colour](TextLook& look) { look.colour = colour; });
}

TextLook RichText::LookAt(std::int32_t position) const {
    const auto& runs = Runs();
    if (position < 0 || static_cast<std::size_t>(position) >= Text().size()) return {};
    const auto next =
        std::upper_bound(runs.begin(), runs.end(), position,
                         [](std::int32_t place, const TextRun& run) { return place < run.start; });
    return (next - 1)->look;
}

bool RichText::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    const auto* selected = std::get_if<TextSelected>(&event);
    if (!selected || !IsOpenToUser()) return false;
    Select(selected->span, Source::kView);
    return true;
}

}  // namespace korvane::platform
