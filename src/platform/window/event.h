// What a user does to a window, as messages from a view to the model. The model
// checks each against its own state: a view may lag behind, or send nonsense.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <variant>

#include "platform/window/types.h"

namespace korvane::platform {

// Shift states add up.
inline constexpr std::int32_t kShift = 1;
inline constexpr std::int32_t kCtrl = 2;
inline constexpr std::int32_t kAlt = 4;

// Key codes are those of the hosts' platform: letters and digits are their
// upper-case characters' codes.
inline constexpr std::int32_t kKeyEnter = 13;
inline constexpr std::int32_t kKeyShift = 16;
inline constexpr std::int32_t kKeyCtrl = 17;
inline constexpr std::int32_t kKeyAlt = 18;

struct KeyDown {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t code = 0;
    std::int32_t shift = 0;
    friend bool operator==(const KeyDown&, const KeyDown&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.code, self.shift);
    }
};

// A button was pressed; a text box, label or picture was clicked.
struct Clicked {
    WindowId window = 0;
    ControlId control = 0;
    friend bool operator==(const Clicked&, const Clicked&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control);
    }
};

// A check box was ticked or unticked.
struct Toggled {
    WindowId window = 0;
    ControlId control = 0;
    bool checked = false;
    friend bool operator==(const Toggled&, const Toggled&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.checked);
    }
};

enum class MouseAction : std::uint8_t { kDown, kMove, kUp, kCount_ };
inline constexpr std::int32_t kLeftButton = 1;

struct Mouse {
    WindowId window = 0;
    ControlId control = 0;
    MouseAction action = MouseAction::kMove;
    std::int32_t button = 0;  // 1 left, 2 right, 4 middle; 0 for a move without one
    std::int32_t shift = 0;
    float x = 0;  // twips within the control
    float y = 0;
    friend bool operator==(const Mouse&, const Mouse&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.action, self.button, self.shift, self.x,
                        self.y);
    }
};

// A row was selected by mouse or keys.
struct NodeSelected {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t node = 0;
    friend bool operator==(const NodeSelected&, const NodeSelected&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.node);
    }
};

// A row was expanded or collapsed.
struct NodeToggled {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t node = 0;
    bool expanded = false;
    friend bool operator==(const NodeToggled&, const NodeToggled&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.node, self.expanded);
    }
};

// A column was dragged to another width in pixels.
struct ColumnResized {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t column = 0;  // from 1
    std::int32_t width = 0;
    friend bool operator==(const ColumnResized&, const ColumnResized&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.column, self.width);
    }
};

// A tree view was scrolled.
struct Scrolled {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t position = 0;  // pixels, 0 or more
    friend bool operator==(const Scrolled&, const Scrolled&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.position);
    }
};

// The caret was put somewhere, or characters were selected.
struct TextSelected {
    WindowId window = 0;
    ControlId control = 0;
    TextSpan span;
    friend bool operator==(const TextSelected&, const TextSelected&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.span);
    }
};

// A text box was typed into; `text` is its whole content now.
struct TextEdited {
    WindowId window = 0;
    ControlId control = 0;
    std::u16string text;
    friend bool operator==(const TextEdited&, const TextEdited&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.text);
    }
};

// An item of a combo box was chosen, perhaps the same again.
struct ItemChosen {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t index = 0;
    friend bool operator==(const ItemChosen&, const ItemChosen&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.index);
    }
};

// A control got the keyboard focus.
struct ControlFocused {
    WindowId window = 0;
    ControlId control = 0;
    friend bool operator==(const ControlFocused&, const ControlFocused&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control);
    }
};

// A window was moved or resized.
struct FormPlaced {
    WindowId window = 0;
    Place place;
    friend bool operator==(const FormPlaced&, const FormPlaced&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.place);
    }
};

// A window came to the front.
struct FormActivated {
    WindowId window = 0;
    friend bool operator==(const FormActivated&, const FormActivated&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window);
    }
};

// A window is to close: by its close box, or because the host or the system is
// going away.
struct CloseAsked {
    WindowId window = 0;
    bool byUser = true;
    friend bool operator==(const CloseAsked&, const CloseAsked&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.byUser);
    }
};

using Event = std::variant<KeyDown, Clicked, Toggled, Mouse, NodeSelected, NodeToggled,
                           ColumnResized, Scrolled, TextSelected, TextEdited, ItemChosen,
                           ControlFocused, FormPlaced, FormActivated, CloseAsked>;

}  // namespace korvane::platform
