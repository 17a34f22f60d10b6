// What happens to windows, as messages from the model to its views. A view that
// applies every change from its attachment on shows what the model holds.
#pragma once

#include <cstdint>
#include <tuple>
#include <variant>

#include "platform/window/design.h"
#include "platform/window/types.h"

namespace korvane::platform {

// A window was loaded; it is hidden and as designed until further changes. Its
// place is that of the design with `frame` around the client area.
struct FormOpened {
    WindowId window = 0;
    FormDesign design;
    FrameSize frame;
    friend bool operator==(const FormOpened&, const FormOpened&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.design, self.frame);
    }
};

// A window is gone for good.
struct FormClosed {
    WindowId window = 0;
    friend bool operator==(const FormClosed&, const FormClosed&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window);
    }
};

struct PropertySet {
    WindowId window = 0;
    ControlId control = kFormItself;
    Property property = Property::kPlace;
    PropertyValue value;  // of the property's type
    friend bool operator==(const PropertySet&, const PropertySet&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.property, self.value);
    }
};

// A tree view lost all its rows, and with them its selection.
struct NodesCleared {
    WindowId window = 0;
    ControlId control = 0;
    friend bool operator==(const NodesCleared&, const NodesCleared&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control);
    }
};

// A row was added behind the others.
struct NodeAdded {
    WindowId window = 0;
    ControlId control = 0;
    TreeNode node;
    friend bool operator==(const NodeAdded&, const NodeAdded&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.node);
    }
};

struct NodeExpanded {
    WindowId window = 0;
    ControlId control = 0;
    std::int32_t node = 0;
    bool expanded = false;
    friend bool operator==(const NodeExpanded&, const NodeExpanded&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.node, self.expanded);
    }
};

// The characters of the span look like this now.
struct TextFormatted {
    WindowId window = 0;
    ControlId control = 0;
    TextSpan span;
    TextLook look;
    friend bool operator==(const TextFormatted&, const TextFormatted&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control, self.span, self.look);
    }
};

// The control is to be painted anew.
struct Refreshed {
    WindowId window = 0;
    ControlId control = 0;
    friend bool operator==(const Refreshed&, const Refreshed&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.window, self.control);
    }
};

// The keyboard focus goes to a window, one of the system's or another.
struct WindowFocused {
    std::int64_t handle = 0;
    friend bool operator==(const WindowFocused&, const WindowFocused&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.handle);
    }
};

using Change = std::variant<FormOpened, FormClosed, PropertySet, NodesCleared, NodeAdded,
                            NodeExpanded, TextFormatted, Refreshed, WindowFocused>;

}  // namespace korvane::platform
