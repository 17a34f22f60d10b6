// A text whose characters can look different; the user reads and selects, and
// does not write.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/window/control.h"

namespace korvane::platform {

// Positions are UTF-16 units from 0.
class RichText : public Control {
public:
    using Control::Control;

    const std::u16string& Text() const { return Get<std::u16string>(Property::kText); }
    // All characters plain, the caret at the start.
    void SetText(const std::u16string& text);

    std::int32_t SelStart() const { return Selection().start; }
    std::int32_t SelLength() const { return Selection().length; }
    TextSpan Selection() const { return Get<TextSpan>(Property::kSelection); }
    // Cut to the text; SetSelStart takes the selection's length back to 0. Raise
    // onSelChange when the selection is another one then.
    void SetSelStart(std::int32_t start);
    void SetSelLength(std::int32_t length);
    void SetSelection(TextSpan span);

    // How the selected characters look. Nothing selected: nothing happens.
    void SetSelBold(bool bold);
    void SetSelUnderline(bool underline);
    void SetSelColour(Colour colour);
    // How the character at a place looks; plain beyond the text's end.
    TextLook LookAt(std::int32_t position) const;
    const std::vector<TextRun>& Runs() const { return State().runs(); }

    // The selection is another one, or the user put it where it was already.
    std::function<void()> onSelChange;
    bool Accept(const Event& event) override;

private:
    void Select(TextSpan span, Source source);
    // Changes the look of every run within the selection.
    template <class Alter>
    void AlterSelected(Alter alter);
};

}  // namespace korvane::platform
