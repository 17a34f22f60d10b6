#include "bindings/qt/text_box.h"

#include <QMouseEvent>

#include "bindings/qt/colours.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::Property;
using platform::TextSpan;

TextBoxControl::TextBoxControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                               QWidget* parent)
    : ControlView(desk, window, id), box_(*new QLineEdit(parent)) {
    Adopt(&box_);
    box_.setReadOnly(design().readOnly);
    box_.setMaxLength(1 << 24);  // the model's texts are never cut here
    box_.setMouseTracking(true);
    const auto tell = [this] { TellEdits(); };
    connect(&box_, &QLineEdit::textChanged, this, tell);
    connect(&box_, &QLineEdit::cursorPositionChanged, this, tell);
    connect(&box_, &QLineEdit::selectionChanged, this, tell);
}

TextSpan TextBoxControl::Selected() const {
    if (!box_.hasSelectedText()) return {box_.cursorPosition(), 0};
    return {box_.selectionStart(), box_.selectionLength()};
}

// The text first: the selection is one of the new text.
void TextBoxControl::TellEdits() {
    if (desk().IsQuiet() || !IsOpen()) return;
    Tell(platform::TextEdited{window(), id(), FromQt(box_.text())});
    if (IsOpen()) Tell(platform::TextSelected{window(), id(), Selected()});
}

void TextBoxControl::Show(Property property) {
    switch (property) {
        case Property::kText: ShowText(); break;
        case Property::kSelection: ShowSelection(); break;
        case Property::kBackColour: ShowBackground(); break;
        case Property::kPointer: ShowPointer(); break;
        default: ControlView::Show(property); break;
    }
}

void TextBoxControl::ShowText() {
    const QString text = ToQt(Get<std::u16string>(Property::kText));
    if (box_.text() != text) box_.setText(text);
}

void TextBoxControl::ShowSelection() {
    const auto span = Get<TextSpan>(Property::kSelection);
    if (Selected() == span) return;
    if (span.length > 0) {
        box_.setSelection(span.start, span.length);
    } else {
        box_.setCursorPosition(span.start);
    }
}

void TextBoxControl::ShowBackground() {
    QPalette palette = box_.parentWidget()->palette();
    const auto colour = Get<std::int32_t>(Property::kBackColour);
    if (colour != platform::kDesktopColour) {
        palette.setColor(QPalette::Base, MadeReadable(ToQt(colour), palette.color(QPalette::Text)));
    }
    box_.setPalette(palette);
}

// A text box has a pointer of its own by default.
void TextBoxControl::ShowPointer() {
    ControlView::ShowPointer();
    const auto pointer = static_cast<platform::Pointer>(Get<std::int32_t>(Property::kPointer));
    if (pointer == platform::Pointer::kDefault) box_.setCursor(Qt::IBeamCursor);
}

bool TextBoxControl::Filter(QEvent& event) {
    if (event.type() == QEvent::MouseMove) {
        const auto& mouse = static_cast<QMouseEvent&>(event);
        Tell(platform::Mouse{
            window(), id(), platform::MouseAction::kMove, 0, ShiftState(mouse.modifiers()),
            desk().units.TwipsX(mouse.position().x()), desk().units.TwipsY(mouse.position().y())});
    } else if (event.type() == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<QMouseEvent&>(event);
        if (mouse.button() == Qt::LeftButton && box_.rect().contains(mouse.position().toPoint())) {
            Tell(platform::Clicked{window(), id()});
        }
    }
    return false;
}

}  // namespace korvane::qt
