#include "platform/window/controls.h"

#include <algorithm>

namespace korvane::platform {
namespace {

void Run(const std::function<void()>& handler) {
    if (handler) handler();
}

}  // namespace

bool Label::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    if (!IsOpenToUser() || !std::holds_alternative<Clicked>(event)) return false;
    Run(onClick);
    return true;
}

bool Splitter::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    const auto* mouse = std::get_if<Mouse>(&event);
    if (!mouse || !IsOpenToUser()) return false;
    const MouseHandler& handler = mouse->action == MouseAction::kDown   ? onMouseDown
                                  : mouse->action == MouseAction::kMove ? onMouseMove
                                                                        : onMouseUp;
    if (handler) handler(mouse->button, mouse->shift, mouse->x, mouse->y);
    return true;
}

bool Button::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    if (!IsOpenToUser() || !std::holds_alternative<Clicked>(event)) return false;
    Run(onClick);
    return true;
}

void CheckBox::Check(bool checked, Source source) {
    if (Write(Property::kChecked, checked, source)) Run(onClick);
}

void CheckBox::SetChecked(bool checked) { Check(checked, Source::kSystem); }

bool CheckBox::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    const auto* toggled = std::get_if<Toggled>(&event);
    if (!toggled || !IsOpenToUser()) return false;
    Check(toggled->checked, Source::kView);
    return true;
}

void TextBox::Put(const std::u16string& text, Source source) {
    if (Write(Property::kText, text, source)) Run(onChange);
}

void TextBox::SetText(const std::u16string& text) { Put(text, Source::kSystem); }

void TextBox::SetSelection(TextSpan span) {
    const auto size = static_cast<std::int32_t>(Text().size());
    span.start = std::clamp(span.start, 0, size);
    span.length = std::clamp(span.length, 0, size - span.start);
    Write(Property::kSelection, span);
}

bool TextBox::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    if (!IsOpenToUser()) return false;
    if (const auto* edited = std::get_if<TextEdited>(&event)) {
        if (Design().readOnly) return false;
        Put(edited->text, Source::kView);
        return true;
    }
    if (const auto* selected = std::get_if<TextSelected>(&event)) {
        return Write(Property::kSelection, selected->span, Source::kView);
    }
    if (const auto* mouse = std::get_if<Mouse>(&event)) {
        if (mouse->action != MouseAction::kMove) return false;
        Run(onMouseMove);
        return true;
    }
    if (!std::holds_alternative<Clicked>(event)) return false;
    Run(onClick);
    return true;
}

void ComboBox::AddItem(const std::u16string& item) {
    auto items = Items();
    items.push_back(item);
    Write(Property::kItems, items);
}

bool ComboBox::HasItem(std::int32_t index) const {
    return index >= 0 && static_cast<std::size_t>(index) < Items().size();
}

void ComboBox::SetListIndex(std::int32_t index) {
    if (!HasItem(index)) index = -1;
    if (Write(Property::kListIndex, index)) Run(onClick);
}

bool ComboBox::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    const auto* chosen = std::get_if<ItemChosen>(&event);
    if (!chosen || !IsOpenToUser() || !HasItem(chosen->index)) return false;
    Write(Property::kListIndex, chosen->index, Source::kView);
    Run(onClick);
    return true;
}

}  // namespace korvane::platform
