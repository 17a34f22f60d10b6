#include "bindings/qt/desk.h"

#include <type_traits>
#include <utility>
#include <variant>

namespace korvane::qt {

using platform::Change;
using platform::Event;
using platform::Property;
using platform::PropertySet;

const platform::FormState* Desk::Find(platform::WindowId window) const {
    const auto found = mirror_.forms().find(window);
    return found == mirror_.forms().end() ? nullptr : &found->second;
}

const platform::ControlState* Desk::Find(platform::WindowId window,
                                         platform::ControlId control) const {
    const platform::FormState* form = Find(window);
    return form ? form->Find(control) : nullptr;
}

// What the model makes of an event, when it is a change of state at all.
std::optional<Change> Desk::ChangeOf(const Event& event) const {
    return std::visit(
        [this](const auto& what) -> std::optional<Change> {
            using What = std::decay_t<decltype(what)>;
            const auto set = [&what](Property property, platform::PropertyValue value) {
                platform::ControlId control = platform::kFormItself;
                if constexpr (requires { what.control; }) control = what.control;
                return PropertySet{what.window, control, property, std::move(value)};
            };
            if constexpr (std::is_same_v<What, platform::Toggled>) {
                return set(Property::kChecked, what.checked);
            } else if constexpr (std::is_same_v<What, platform::NodeSelected>) {
                return set(Property::kSelectedNode, what.node);
            } else if constexpr (std::is_same_v<What, platform::NodeToggled>) {
                return platform::NodeExpanded{what.window, what.control, what.node, what.expanded};
            } else if constexpr (std::is_same_v<What, platform::ColumnResized>) {
                const platform::ControlState* state = Find(what.window, what.control);
                if (!state) return std::nullopt;
                auto columns =
                    state->template Get<std::vector<platform::TreeColumn>>(Property::kColumns);
                const auto index = static_cast<std::size_t>(what.column) - 1;
                if (index >= columns.size()) return std::nullopt;
                columns[index].width = what.width;
                return set(Property::kColumns, std::move(columns));
            } else if constexpr (std::is_same_v<What, platform::Scrolled>) {
                return set(Property::kScroll, what.position);
            } else if constexpr (std::is_same_v<What, platform::TextSelected>) {
                return set(Property::kSelection, what.span);
            } else if constexpr (std::is_same_v<What, platform::TextEdited>) {
                return set(Property::kText, what.text);
            } else if constexpr (std::is_same_v<What, platform::ItemChosen>) {
                return set(Property::kListIndex, what.index);
            } else if constexpr (std::is_same_v<What, platform::ControlFocused>) {
                return PropertySet{what.window, platform::kFormItself, Property::kFocus,
                                   what.control};
            } else if constexpr (std::is_same_v<What, platform::FormPlaced>) {
                return set(Property::kPlace, what.place);
            } else {
                return std::nullopt;
            }
        },
        event);
}

bool Desk::Alters(const Change& change) const {
    if (const auto* set = std::get_if<PropertySet>(&change)) {
        const auto* state = Find(set->window, set->control);
        return state && state->Value(set->property) != set->value;
    }
    if (const auto* row = std::get_if<platform::NodeExpanded>(&change)) {
        const auto* state = Find(row->window, row->control);
        if (!state || row->node < 1) return false;
        const auto index = static_cast<std::size_t>(row->node) - 1;
        return index < state->nodes().size() && state->nodes()[index].expanded != row->expanded;
    }
    return true;
}

void Desk::Tell(const Event& event) {
    // Choosing the same item again is an event all the same.
    Tell(event, std::holds_alternative<platform::ItemChosen>(event));
}

void Desk::TellAlways(const Event& event) { Tell(event, true); }

void Desk::Tell(const Event& event, bool always) {
    const auto window = std::visit([](const auto& what) { return what.window; }, event);
    if (IsQuiet() || !Find(window)) return;
    if (const auto change = ChangeOf(event)) {
        if (!Alters(*change)) {
            if (!always) return;
        } else if (!Take(*change)) {
            return;
        }
    }
    tell_(event);
}

}  // namespace korvane::qt
