#include "platform/window/control.h"

#include "platform/window/form.h"

namespace korvane::platform {

Control::Control(Form& form, ControlId id) : form_(form), id_(id) {}

const ControlDesign& Control::Design() const {
    return form_.State().design.controls[static_cast<std::size_t>(id_) - 1];
}

const ControlState& Control::State() const { return *form_.State().Find(id_); }

WindowId Control::WindowNumber() const { return form_.Id(); }

bool Control::Make(const Change& change, Source source) { return form_.Make(change, source); }

bool Control::Write(Property property, const PropertyValue& value, Source source) {
    if (State().Value(property) == value) return false;
    return Make(PropertySet{form_.Id(), id_, property, value}, source);
}

void Control::SetLeft(float twips) {
    Place place = GetPlace();
    place.left = twips;
    Move(place);
}

void Control::SetTop(float twips) {
    Place place = GetPlace();
    place.top = twips;
    Move(place);
}

void Control::SetWidth(float twips) {
    Place place = GetPlace();
    place.width = twips;
    Move(place);
}

void Control::SetHeight(float twips) {
    Place place = GetPlace();
    place.height = twips;
    Move(place);
}

void Control::SetFocus() { form_.SetFocusTo(id_); }

bool Control::HasFocus() const { return form_.FocusedControl() == id_; }

void Control::Refresh() { Make(Refreshed{form_.Id(), id_}); }

bool Control::Accept(const Event& event) {
    if (!IsOpenToUser()) return false;
    if (const auto* key = std::get_if<KeyDown>(&event)) {
        if (onKeyDown) onKeyDown(key->code, key->shift);
        return true;
    }
    if (std::holds_alternative<ControlFocused>(event)) {
        form_.NoteFocus(id_);
        return true;
    }
    return false;
}

}  // namespace korvane::platform
