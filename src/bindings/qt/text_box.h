// A line of text of a window.
#pragma once

#include <QLineEdit>

#include "bindings/qt/control_view.h"

namespace korvane::qt {

class TextBoxControl : public ControlView {
public:
    TextBoxControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

protected:
    void Show(platform::Property property) override;
    bool Filter(QEvent& event) override;

private:
    void ShowText();
    void ShowSelection();
    void ShowBackground();
    void ShowPointer();
    void TellEdits();
    platform::TextSpan Selected() const;

    QLineEdit& box_;
};

}  // namespace korvane::qt
