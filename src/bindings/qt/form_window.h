// A window of the model as a window of the desktop.
#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "bindings/qt/control_view.h"

class QLabel;

namespace korvane::qt {

class FormWindow : public QDialog {
public:
    // The window must be in the desk's state. Stays hidden until it is settled.
    FormWindow(Desk& desk, platform::WindowId window);

    platform::WindowId id() const { return id_; }
    // Null when there is no such control.
    ControlView* Find(platform::ControlId control) const;

    // A change of the window or of one of its controls, made in the state already.
    void Note(const platform::Change& change);
    void NoteAll();
    // Makes everything visible as the state has it; nothing while the window's
    // updates are locked. Within Desk::Quiet.
    void Settle();
    // Tells the model what the desktop has made of it.
    void Reconcile();
    // A line below the controls of a window that stays open; empty takes it away.
    void SetStatus(const QString& text);
    // The model's window is gone: hides and tells nothing any more.
    void Retire();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const platform::FormState* State() const { return desk_.Find(id_); }
    template <class T>
    const T& Get(platform::Property property) const {
        return State()->self.Get<T>(property);
    }
    void MakeControls();
    void SetTabOrders();
    void SetBuddies();
    void Show(platform::Property property);
    void ShowPlace();
    QPoint FrameCorner() const;
    void MeetFrame();
    void FocusFirst();
    void ShowFocus();
    void ShowOwner();
    void ShowHow();
    void Appear(platform::Shown how);
    void ShowStatus();
    void Centre();
    QSize ClientSize() const;
    void TellPlace();
    void TellFocus();
    void Press(bool platform::ControlDesign::*role);

    Desk& desk_;
    platform::WindowId id_;
    std::vector<std::unique_ptr<ControlView>> controls_;
    std::bitset<static_cast<std::size_t>(platform::Property::kCount_)> noted_;
    QLabel* status_ = nullptr;
    QString statusText_;
    bool toldActive_ = false;
    bool isFramed_ = false;  // the desktop has made the frame, since it was shown
    QPoint expectedCorner_;  // FrameCorner before that
};

}  // namespace korvane::qt
