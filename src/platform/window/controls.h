// The simple controls; tree_view.h and rich_text.h have the others.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/window/control.h"

namespace korvane::platform {

// A label, frame, picture or rectangle: shows something, and can be clicked.
class Label : public Control {
public:
    using Control::Control;
    std::function<void()> onClick;
    bool Accept(const Event& event) override;
};

// A label that the user drags: it hears of every press, move and release.
// Distances are twips within the control, which may move meanwhile.
class Splitter : public Control {
public:
    using Control::Control;
    using MouseHandler =
        std::function<void(std::int32_t button, std::int32_t shift, float x, float y)>;
    MouseHandler onMouseDown;
    MouseHandler onMouseMove;
    MouseHandler onMouseUp;
    bool Accept(const Event& event) override;
};

class Button : public Control {
public:
    using Control::Control;
    std::function<void()> onClick;
    bool Accept(const Event& event) override;
};

class CheckBox : public Control {
public:
    using Control::Control;
    bool Checked() const { return Get<bool>(Property::kChecked); }
    // Raises onClick when it changes, as the user's own click does.
    void SetChecked(bool checked);
    std::function<void()> onClick;
    bool Accept(const Event& event) override;

private:
    void Check(bool checked, Source source);
};

// One line of text.
class TextBox : public Control {
public:
    using Control::Control;
    const std::u16string& Text() const { return Get<std::u16string>(Property::kText); }
    // Raises onChange when it changes; the caret is at the start then.
    void SetText(const std::u16string& text);
    TextSpan Selection() const { return Get<TextSpan>(Property::kSelection); }
    // Cut to the text.
    void SetSelection(TextSpan span);
    Colour BackColour() const { return Get<std::int32_t>(Property::kBackColour); }
    void SetBackColour(Colour colour) { Write(Property::kBackColour, colour); }
    // What the mouse pointer looks like over the box.
    platform::Pointer Pointer() const {
        return static_cast<platform::Pointer>(Get<std::int32_t>(Property::kPointer));
    }
    void SetPointer(platform::Pointer pointer) {
        Write(Property::kPointer, static_cast<std::int32_t>(pointer));
    }
    std::function<void()> onChange;
    std::function<void()> onClick;
    std::function<void()> onMouseMove;
    bool Accept(const Event& event) override;

private:
    void Put(const std::u16string& text, Source source);
};

// One of several texts.
class ComboBox : public Control {
public:
    using Control::Control;
    const std::vector<std::u16string>& Items() const {
        return Get<std::vector<std::u16string>>(Property::kItems);
    }
    void AddItem(const std::u16string& item);
    // The chosen item from 0; -1 for none.
    std::int32_t ListIndex() const { return Get<std::int32_t>(Property::kListIndex); }
    // Raises onClick when it changes. An index without an item chooses none.
    void SetListIndex(std::int32_t index);
    std::function<void()> onClick;
    bool Accept(const Event& event) override;

private:
    bool HasItem(std::int32_t index) const;
};

}  // namespace korvane::platform
