// A window of the system: its own state and its controls.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/window/control.h"
#include "platform/window/controls.h"
#include "platform/window/rich_text.h"
#include "platform/window/tree_view.h"

namespace korvane::platform {

class Windows;

// A window lives from Windows::Load to its Unload, or to its end as an object,
// whichever is first; a closed window's state can still be read, and writing to
// it does nothing. The rules of control.h hold for it too.
class Form {
public:
    Form(Windows& windows, WindowId id, const FormDesign& design);
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    ~Form();

    WindowId Id() const { return state_.window; }
    // The number by which other windows and the host know it.
    std::int64_t Handle() const { return kFirstOwnHandle + state_.window; }
    const std::u16string& Name() const { return state_.design.name; }
    // The title.
    const std::u16string& Caption() const;
    void SetCaption(const std::u16string& caption);

    // Twips, the frame included. A write raises onResize when the size is
    // another one then, as the user's own dragging does.
    const Place& GetPlace() const { return state_.self.Get<Place>(Property::kPlace); }
    void Move(const Place& place);
    float Left() const { return GetPlace().left; }
    float Top() const { return GetPlace().top; }
    float Width() const { return GetPlace().width; }
    float Height() const { return GetPlace().height; }
    void SetWidth(float twips);
    void SetHeight(float twips);

    // Whether the user can drag the frame.
    bool Resizable() const { return state_.self.Get<bool>(Property::kResizable); }
    void SetResizable(bool resizable);
    // The window above which this one stays and with which it is minimised.
    std::int64_t Owner() const { return state_.self.Get<std::int64_t>(Property::kOwner); }
    void SetOwner(std::int64_t handle);

    // Shows the window and returns at once.
    void Show();
    // Shows it and returns when it is hidden or closed; the user reaches no
    // other window of the system meanwhile. Raises, with the window hidden, when
    // nobody can bring his events.
    void ShowModal();
    void Hide();
    Shown HowShown() const;
    bool IsShown() const { return HowShown() != Shown::kHidden; }
    bool IsOpen() const { return isOpen_; }

    // Closes the window unless onQueryClose refuses: onUnload runs, once, and
    // the window is gone. False when it was refused.
    bool Unload(bool byUser = false);

    // The controls in their designed order; ids count from 1.
    const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }
    // The control with this name; T is its class. The design must have it.
    template <class T>
    T& Get(const char16_t* name) const {
        return dynamic_cast<T&>(Find(name));
    }
    // Null when there is none.
    Control* Find(ControlId id) const;

    // The control that has the focus within the window; 0 for none.
    ControlId FocusedControl() const { return state_.self.Get<std::int32_t>(Property::kFocus); }

    // The size is another one.
    std::function<void()> onResize;
    // The window came to the front.
    std::function<void()> onActivate;
    // The window is about to close; true refuses. `byUser` tells its close box
    // from the host's or the system's end.
    std::function<bool(bool byUser)> onQueryClose;
    // The window closes.
    std::function<void()> onUnload;
    // The window was unloaded: its owner may let go of it (Windows::LetGoLater).
    std::function<void()> onClosed;

    const FormState& State() const { return state_; }

    // For controls and the window system.
    bool Make(const Change& change, Source source);
    void SetFocusTo(ControlId control);
    void NoteFocus(ControlId control);  // as a view says
    bool Accept(const Event& event);

private:
    Control& Find(const char16_t* name) const;
    bool Write(Property property, const PropertyValue& value, Source source = Source::kSystem);
    void Put(const Place& place, Source source);
    void SetShown(Shown shown) { Write(Property::kShown, static_cast<std::int32_t>(shown)); }
    void Close();

    Windows& windows_;
    FormState state_;
    std::vector<std::unique_ptr<Control>> controls_;
    std::shared_ptr<char> life_ = std::make_shared<char>();  // ends with the object
    bool isOpen_ = true;
    bool isUnloading_ = false;
};

}  // namespace korvane::platform
