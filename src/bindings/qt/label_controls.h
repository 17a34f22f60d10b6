// Labels, pictures, and the bar that is dragged.
#pragma once

#include <QLabel>
#include <QTimer>

#include "bindings/qt/control_view.h"
#include "bindings/qt/picture.h"

namespace korvane::qt {

// What can be clicked and does nothing else.
class ClickedControl : public ControlView {
public:
    using ControlView::ControlView;

protected:
    bool Filter(QEvent& event) override;
};

class LabelControl : public ClickedControl {
public:
    LabelControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

    // Its access key leads there; null for a label that stands for itself.
    void SetBuddy(QWidget* buddy);

protected:
    void Show(platform::Property property) override;

private:
    void ShowCaption();
    QLabel& label_;
};

class PictureControl : public ClickedControl {
public:
    PictureControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

protected:
    void Show(platform::Property property) override;

private:
    void ShowPicture();
    PictureBox& box_;
};

class SplitterControl : public ControlView {
public:
    SplitterControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

protected:
    bool Filter(QEvent& event) override;

private:
    void TellMouse(platform::MouseAction action, std::int32_t button, Qt::KeyboardModifiers keys);

    QTimer again_;
    QPointF pointer_;  // within the window, as seen last
    double grip_ = 0;  // twips: where within the bar it was pressed
};

}  // namespace korvane::qt
