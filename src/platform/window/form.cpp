#include "platform/window/form.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/error.h"
#include "platform/window/windows.h"

namespace korvane::platform {
namespace {

std::unique_ptr<Control> NewControl(Form& form, ControlId id, ControlKind kind) {
    switch (kind) {
        case ControlKind::kTreeView: return std::make_unique<TreeView>(form, id);
        case ControlKind::kRichText: return std::make_unique<RichText>(form, id);
        case ControlKind::kCheckBox: return std::make_unique<CheckBox>(form, id);
        case ControlKind::kButton: return std::make_unique<Button>(form, id);
        case ControlKind::kTextBox: return std::make_unique<TextBox>(form, id);
        case ControlKind::kComboBox: return std::make_unique<ComboBox>(form, id);
        case ControlKind::kSplitter: return std::make_unique<Splitter>(form, id);
        case ControlKind::kLabel:
        case ControlKind::kFrame:
        case ControlKind::kPicture:
        case ControlKind::kRectangle:
        case ControlKind::kCount_: break;
    }
    return std::make_unique<Label>(form, id);
}

// Whether a window can stand there: far beyond any desktop are only the numbers
// of a view that has gone wrong.
bool IsSensible(const Place& place) {
    constexpr float kFar = 4'000'000;  // twips; over 250,000 pixels
    return place.width > 0 && place.height > 0 && place.width < kFar && place.height < kFar &&
           std::abs(place.left) < kFar && std::abs(place.top) < kFar;
}

}  // namespace

Form::Form(Windows& windows, WindowId id, const FormDesign& design)
    : windows_(windows), state_(FormOpened{id, design, windows.frame}) {
    for (const ControlDesign& control : state_.design.controls) {
        const auto number = static_cast<ControlId>(controls_.size()) + 1;
        controls_.push_back(NewControl(*this, number, control.kind));
    }
    windows_.Register(*this);
}

Form::~Form() { Close(); }

void Form::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    windows_.Unregister(*this);
}

bool Form::Make(const Change& change, Source source) {
    if (!isOpen_ || !state_.Apply(change)) return false;
    windows_.Tell(change, source);
    return true;
}

bool Form::Write(Property property, const PropertyValue& value, Source source) {
    if (state_.self.Value(property) == value) return false;
    return Make(PropertySet{Id(), kFormItself, property, value}, source);
}

const std::u16string& Form::Caption() const {
    return state_.self.Get<std::u16string>(Property::kCaption);
}

void Form::SetCaption(const std::u16string& caption) { Write(Property::kCaption, caption); }

void Form::Put(const Place& place, Source source) {
    if (!isOpen_) return;
    const Place before = GetPlace();
    Write(Property::kPlace, place, source);
    const bool resized = place.width != before.width || place.height != before.height;
    if (resized && onResize) onResize();
}

void Form::Move(const Place& place) { Put(place, Source::kSystem); }

void Form::SetWidth(float twips) {
    Place place = GetPlace();
    place.width = twips;
    Move(place);
}

void Form::SetHeight(float twips) {
    Place place = GetPlace();
    place.height = twips;
    Move(place);
}

void Form::SetResizable(bool resizable) {
    windows_.Call("Form.SetResizable");
    Write(Property::kResizable, resizable);
}

void Form::SetOwner(std::int64_t handle) {
    windows_.Call("Form.SetOwner");
    Write(Property::kOwner, handle);
}

Shown Form::HowShown() const {
    return isOpen_ ? static_cast<Shown>(state_.self.Get<std::int32_t>(Property::kShown))
                   : Shown::kHidden;
}

void Form::Show() {
    windows_.Call("Form.Show");
    SetShown(Shown::kModeless);
}

void Form::ShowModal() {
    windows_.Call("Form.ShowModal");
    SetShown(Shown::kModal);
    struct HideAtEnd {
        Form& form;
        ~HideAtEnd() { form.Hide(); }
    } hideAtEnd{*this};
    const ModalScope scope(windows_, this);
    windows_.modal().Run([this] { return !IsShown(); });
}

void Form::Hide() { SetShown(Shown::kHidden); }

bool Form::Unload(bool byUser) {
    if (!isOpen_ || isUnloading_) return true;
    if (onQueryClose) {
        const std::weak_ptr<char> life = life_;
        const bool refused = onQueryClose(byUser);
        // Closed while it was asked, and perhaps no more.
        if (life.expired() || !isOpen_ || isUnloading_) return true;
        if (refused) return false;
    }
    isUnloading_ = true;
    struct CloseAtEnd {
        Form& form;
        ~CloseAtEnd() { form.Close(); }
    };
    {
        const CloseAtEnd closeAtEnd{*this};
        if (onUnload) onUnload();
    }
    // Last: the owner may let go of this very object.
    if (onClosed) std::exchange(onClosed, {})();
    return true;
}

Control& Form::Find(const char16_t* name) const {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(),
                     [name](const auto& control) { return control->Name() == name; });
    if (found == controls_.end()) {
        throw Error(kErrorInvalidCall, Name() + u" has no control " + name);
    }
    return **found;
}

Control* Form::Find(ControlId id) const {
    if (id < 1 || static_cast<std::size_t>(id) > controls_.size()) return nullptr;
    return controls_[static_cast<std::size_t>(id) - 1].get();
}

void Form::SetFocusTo(ControlId control) {
    windows_.Call("Control.SetFocus");
    Write(Property::kFocus, control);
}

void Form::NoteFocus(ControlId control) { Write(Property::kFocus, control, Source::kView); }

bool Form::Accept(const Event& event) {
    if (const auto* placed = std::get_if<FormPlaced>(&event)) {
        if (!IsSensible(placed->place)) return false;
        Put(placed->place, Source::kView);
        return true;
    }
    if (std::holds_alternative<FormActivated>(event)) {
        if (!IsShown()) return false;
        if (onActivate) onActivate();
        return true;
    }
    if (const auto* close = std::get_if<CloseAsked>(&event)) {
        Unload(close->byUser);
        return true;
    }
    return std::visit(
        [this, &event](const auto& what) {
            if constexpr (requires { what.control; }) {
                Control* control = IsShown() ? Find(what.control) : nullptr;
                return control && control->Accept(event);
            } else {
                return false;
            }
        },
        event);
}

}  // namespace korvane::platform
