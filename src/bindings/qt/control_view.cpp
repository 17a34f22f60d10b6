#include "bindings/qt/control_view.h"

#include <QKeyEvent>

#include "bindings/qt/colours.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::Property;

ControlView::ControlView(Desk& desk, platform::WindowId window, platform::ControlId id)
    : desk_(desk),
      window_(window),
      id_(id),
      design_(desk.Find(window)->design.controls[static_cast<std::size_t>(id) - 1]) {
    noted_.set();
}

void ControlView::Adopt(QWidget* widget) {
    widget_ = widget;
    widget_->setObjectName(ToQt(design_.name));
    if (design_.tabIndex < 0 && widget_->focusPolicy() != Qt::NoFocus) {
        widget_->setFocusPolicy(Qt::ClickFocus);
    }
    widget_->installEventFilter(this);
}

bool ControlView::TakesFocus() const { return widget_->focusPolicy() != Qt::NoFocus; }

void ControlView::Note(const platform::Change& change) {
    if (const auto* set = std::get_if<platform::PropertySet>(&change)) {
        noted_.set(static_cast<std::size_t>(set->property));
        // A new text takes the selection back to its start.
        if (set->property == Property::kText) {
            noted_.set(static_cast<std::size_t>(Property::kSelection));
        }
    } else if (std::holds_alternative<platform::Refreshed>(change)) {
        widget_->update();
    }
}

void ControlView::Settle() {
    for (std::size_t k = 0; k < noted_.size(); ++k) {
        if (!noted_.test(k)) continue;
        noted_.reset(k);
        Show(static_cast<Property>(k));
    }
}

void ControlView::Show(Property property) {
    switch (property) {
        case Property::kPlace:
            widget_->setGeometry(desk_.units.Pixels(Get<platform::Place>(Property::kPlace)));
            break;
        case Property::kVisible: widget_->setVisible(Get<bool>(Property::kVisible)); break;
        case Property::kEnabled: widget_->setEnabled(Get<bool>(Property::kEnabled)); break;
        default: break;
    }
}

void ControlView::ShowCaptionColour() {
    QPalette palette = widget_->parentWidget()->palette();
    const auto colour = Get<std::int32_t>(Property::kForeColour);
    // Disabled texts stay as grey as all others are.
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setCurrentColorGroup(group);
        const QColor shown = TextColour(colour, palette, QPalette::WindowText, QPalette::Window);
        palette.setColor(group, QPalette::WindowText, shown);
        if (colour != 0) palette.setColor(group, QPalette::ButtonText, shown);
    }
    widget_->setPalette(palette);
}

void ControlView::ShowPointer() {
    switch (static_cast<platform::Pointer>(Get<std::int32_t>(Property::kPointer))) {
        case platform::Pointer::kHand: widget_->setCursor(Qt::PointingHandCursor); break;
        case platform::Pointer::kSizeVertical: widget_->setCursor(Qt::SizeVerCursor); break;
        default: widget_->unsetCursor(); break;
    }
}

bool ControlView::eventFilter(QObject* object, QEvent* event) {
    if (object != widget_ || !IsOpen()) return false;
    if (event->type() == QEvent::FocusIn) {
        Tell(platform::ControlFocused{window_, id_});
    } else if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const std::int32_t code = KeyCode(key);
        // One press of Enter is one Enter: held down it would close one window
        // after the other.
        if (code == platform::kKeyEnter && key.isAutoRepeat()) return true;
        if (code != 0) {
            Tell(platform::KeyDown{window_, id_, code, ShiftState(key.modifiers())});
        }
        if (!IsOpen() || FilterKey(key)) return true;
    }
    return IsOpen() && Filter(*event);
}

}  // namespace korvane::qt
