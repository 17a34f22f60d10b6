// A control of a window as a widget. Widgets follow the copy of the windows'
// state: changes are noted as they come and shown together, before anything is
// painted, so that nobody sees a window half changed.
#pragma once

#include <QObject>
#include <QWidget>
#include <bitset>

#include "bindings/qt/desk.h"

class QKeyEvent;

namespace korvane::qt {

class ControlView : public QObject {
public:
    ControlView(Desk& desk, platform::WindowId window, platform::ControlId id);

    platform::ControlId id() const { return id_; }
    const platform::ControlDesign& design() const { return design_; }
    // Owned by the window's widget.
    QWidget& widget() const { return *widget_; }

    // A change of this control, made in the state already.
    virtual void Note(const platform::Change& change);
    // Everything is to be shown anew: the palette or the scale is another one.
    virtual void NoteAll() { noted_.set(); }
    // Makes the widget show what was noted. Within Desk::Quiet.
    virtual void Settle();
    // Tells the model what became of its changes, where the desktop has the last
    // word.
    virtual void Reconcile() {}
    // The window is on the screen now. Within Desk::Quiet.
    virtual void Appeared() {}

    // Whether the user can do anything with the control by keys.
    bool TakesFocus() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

    // To be called once, in the constructor.
    void Adopt(QWidget* widget);
    // Shows one property; those common to all controls are shown here.
    virtual void Show(platform::Property property);
    // An event of the widget before the widget has it; true keeps it away.
    virtual bool Filter(QEvent& /*event*/) { return false; }
    // A key press that the model was told of; true keeps it from the widget.
    virtual bool FilterKey(const QKeyEvent& /*event*/) { return false; }

    Desk& desk() const { return desk_; }
    platform::WindowId window() const { return window_; }
    // Whether the window is still open; a handler may have closed it.
    bool IsOpen() const { return desk_.Find(window_) != nullptr; }
    // Only while the window is open.
    const platform::ControlState& State() const { return *desk_.Find(window_, id_); }
    template <class T>
    const T& Get(platform::Property property) const {
        return State().Get<T>(property);
    }
    void Tell(const platform::Event& event) { desk_.Tell(event); }

    // Shows the colour of the caption.
    void ShowCaptionColour();
    void ShowPointer();

private:
    Desk& desk_;
    platform::WindowId window_;
    platform::ControlId id_;
    const platform::ControlDesign design_;
    QWidget* widget_ = nullptr;
    std::bitset<static_cast<std::size_t>(platform::Property::kCount_)> noted_;
};

}  // namespace korvane::qt
