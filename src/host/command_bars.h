// The classic menu bar and toolbars of hosts without a ribbon.
#pragma once

#include <optional>
#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

class CommandBars : public Object {
public:
    std::u16string TypeName() const override { return u"CommandBars"; }

    // The bar with this name ("Worksheet Menu Bar", "Formula Auditing"). Raises
    // when there is none.
    virtual CommandBarPtr Item(const std::u16string& name) = 0;
    // The first control anywhere on the bars with this tag, or null (FindControl
    // with only the tag given). The click sink is bound to it.
    virtual CommandBarControlPtr FindControl(const std::u16string& tag) = 0;
};

class CommandBar : public Object {
public:
    std::u16string TypeName() const override { return u"CommandBar"; }
    virtual CommandBarControlsPtr Controls() = 0;
};

class CommandBarControls : public Object {
public:
    std::u16string TypeName() const override { return u"CommandBarControls"; }

    // What to add. `temporary` controls are forgotten when the host closes.
    struct NewControl {
        int type = 0;                             // msoControlButton or msoControlPopup
        int id = 1;                               // 1: a custom control
        std::optional<std::u16string> parameter;  // the command identifier
        std::optional<int> before;                // 1-based place; the end when left out
        bool temporary = true;
    };
    // Adds a control and returns it: a CommandBarButton for a button.
    virtual CommandBarControlPtr Add(const NewControl& control) = 0;
    virtual int Count() = 0;
    // The control at `index`, 1 to Count. Raises outside.
    virtual CommandBarControlPtr Item(int index) = 0;
};

class CommandBarControl : public Object {
public:
    std::u16string TypeName() const override { return u"CommandBarControl"; }

    // The built-in control's number (30007 is the Tools menu); 1 for custom ones.
    virtual int Id() = 0;
    // "&" marks the access key.
    virtual std::u16string Caption() = 0;
    virtual void SetCaption(const std::u16string& caption) = 0;
    // The system's marker on every control that it adds.
    virtual std::u16string Tag() = 0;
    virtual void SetTag(const std::u16string& tag) = 0;
    // The command identifier, read back when the button is clicked.
    virtual std::u16string Parameter() = 0;
    virtual void SetParameter(const std::u16string& parameter) = 0;
    // A separator line before the control.
    virtual void SetBeginGroup(bool begin) = 0;
    virtual void SetVisible(bool visible) = 0;
    // Removes the control from its bar.
    virtual void Delete() = 0;
    // The controls of a popup. Raises for any other control.
    virtual CommandBarControlsPtr Controls() = 0;
};

// A click on a button. Implementations must not throw.
class CommandBarButtonEvents {
public:
    virtual ~CommandBarButtonEvents() = default;
    // Raised for every control that carries the tag of the one subscribed to.
    // `cancelDefault` set to true keeps the host from doing anything else.
    virtual void Click(const CommandBarButtonPtr& control, bool& cancelDefault) = 0;
};

class CommandBarButton : public CommandBarControl {
public:
    std::u16string TypeName() const override { return u"CommandBarButton"; }

    virtual void SetStyle(int style) = 0;
    // The icon and its transparency mask: the content of an image file. The
    // button keeps a copy.
    virtual void SetPicture(const std::string& image) = 0;
    virtual void SetMask(const std::string& image) = 0;
    // Delivers clicks to `sink`, which must outlive the subscription.
    virtual SubscriptionPtr Connect(CommandBarButtonEvents& sink) = 0;
};

}  // namespace korvane::host
