// A control of a window: state with changes and events.
//
// Rules for every control:
// - Reading answers from the state and never asks a view. A write updates the
//   state, tells the views, and then raises the control's event when there is
//   one for it, within the write; a write that changes nothing does nothing.
// - An event from a view is checked, updates the state, and then runs the
//   handler. One that does not fit (a hidden or disabled control, a row that is
//   no more) is dropped.
// - Handlers are set by the control's owner and must not throw.
// - Places are in twips within the window's client area.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/window/event.h"
#include "platform/window/state.h"

namespace korvane::platform {

class Form;

// Who writes: the system itself, or a view whose own doing need not be told back
// to it.
enum class Source { kSystem, kView };

class Control {
public:
    Control(Form& form, ControlId id);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    ControlId Id() const { return id_; }
    const ControlDesign& Design() const;
    ControlKind Kind() const { return Design().kind; }
    const std::u16string& Name() const { return Design().name; }
    const std::u16string& Tag() const { return Design().tag; }

    const Place& GetPlace() const { return Get<Place>(Property::kPlace); }
    void Move(const Place& place) { Write(Property::kPlace, place); }
    float Left() const { return GetPlace().left; }
    float Top() const { return GetPlace().top; }
    float Width() const { return GetPlace().width; }
    float Height() const { return GetPlace().height; }
    void SetLeft(float twips);
    void SetTop(float twips);
    void SetWidth(float twips);
    void SetHeight(float twips);

    bool Visible() const { return Get<bool>(Property::kVisible); }
    void SetVisible(bool visible) { Write(Property::kVisible, visible); }
    bool Enabled() const { return Get<bool>(Property::kEnabled); }
    void SetEnabled(bool enabled) { Write(Property::kEnabled, enabled); }
    // "&" marks the access key.
    const std::u16string& Caption() const { return Get<std::u16string>(Property::kCaption); }
    void SetCaption(const std::u16string& caption) { Write(Property::kCaption, caption); }
    Colour ForeColour() const { return Get<std::int32_t>(Property::kForeColour); }
    void SetForeColour(Colour colour) { Write(Property::kForeColour, colour); }

    // Makes this the window's control with the keyboard focus.
    void SetFocus();
    bool HasFocus() const;
    // Has views paint the control anew.
    void Refresh();

    // A key went down while the control had the focus; `shift` adds up kShift,
    // kCtrl and kAlt.
    std::function<void(std::int32_t code, std::int32_t shift)> onKeyDown;

    // Takes an event about this control; false when it does not fit.
    virtual bool Accept(const Event& event);

protected:
    template <class T>
    const T& Get(Property property) const {
        return State().Get<T>(property);
    }
    // True when the value is another than before.
    bool Write(Property property, const PropertyValue& value, Source source = Source::kSystem);
    bool Make(const Change& change, Source source = Source::kSystem);
    const ControlState& State() const;
    WindowId WindowNumber() const;
    // Whether the user can do anything with the control now.
    bool IsOpenToUser() const { return Visible() && Enabled(); }

private:
    Form& form_;
    ControlId id_;
};

}  // namespace korvane::platform
