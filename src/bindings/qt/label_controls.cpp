#include "bindings/qt/label_controls.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <cmath>

#include "base/attempt.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::MouseAction;
using platform::Property;

bool ClickedControl::Filter(QEvent& event) {
    if (event.type() == QEvent::MouseButtonPress) return true;  // else no release comes
    if (event.type() != QEvent::MouseButtonRelease) return false;
    const auto& mouse = static_cast<QMouseEvent&>(event);
    if (mouse.button() == Qt::LeftButton && widget().rect().contains(mouse.position().toPoint())) {
        Tell(platform::Clicked{window(), id()});
    }
    return true;
}

LabelControl::LabelControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                           QWidget* parent)
    : ClickedControl(desk, window, id), label_(*new QLabel(parent)) {
    Adopt(&label_);
    label_.setTextFormat(Qt::PlainText);
    label_.setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void LabelControl::SetBuddy(QWidget* buddy) {
    label_.setBuddy(buddy);
    if (desk().Find(window())) ShowCaption();
}

// Qt reads access marks in labels with a buddy alone.
void LabelControl::ShowCaption() {
    const auto& caption = Get<std::u16string>(Property::kCaption);
    label_.setText(label_.buddy() ? ToQt(caption) : WithoutMark(caption));
}

void LabelControl::Show(Property property) {
    switch (property) {
        case Property::kCaption: ShowCaption(); break;
        case Property::kForeColour: ShowCaptionColour(); break;
        case Property::kPointer: ShowPointer(); break;
        case Property::kPlace:
            ControlView::Show(property);
            // A label of one line is not broken: it would lose its end.
            label_.setWordWrap(label_.height() >= 2 * label_.fontMetrics().height());
            break;
        default: ControlView::Show(property); break;
    }
}

PictureControl::PictureControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                               QWidget* parent)
    : ClickedControl(desk, window, id), box_(*new PictureBox(parent)) {
    Adopt(&box_);
    box_.lower();
}

void PictureControl::Show(Property property) {
    ControlView::Show(property);
    if (property == Property::kPicture) ShowPicture();
    if (property == Property::kPointer) ShowPointer();
}

void PictureControl::ShowPicture() {
    const auto& name = Get<std::u16string>(Property::kPicture);
    std::string content;
    if (desk().pictures && !name.empty()) {
        Suppressed([&] { content = desk().pictures->Picture(name); });
    }
    box_.SetPicture(content);
}

namespace {

// A bar with the style's grip.
class Bar : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        option.state &= ~QStyle::State_Horizontal;  // what it divides is not side by side
        style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
    }
};

// While the bar is held it hears of the pointer this often even when that rests:
// it moves by a share of its distance at each time, and so arrives.
constexpr int kAgain = 16;  // milliseconds

std::int32_t ButtonNumber(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton: return platform::kLeftButton;
        case Qt::RightButton: return 2;
        case Qt::MiddleButton: return 4;
        default: return 0;
    }
}

std::int32_t ButtonNumber(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
           (buttons & Qt::MiddleButton ? 4 : 0);
}

}  // namespace

SplitterControl::SplitterControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                                 QWidget* parent)
    : ControlView(desk, window, id) {
    auto* bar = new Bar(parent);
    Adopt(bar);
    bar->setCursor(Qt::SizeVerCursor);
    again_.setInterval(kAgain);
    connect(&again_, &QTimer::timeout, this, [this] {
        if (!IsOpen()) return again_.stop();
        const double y = pointer_.y() * this->desk().units.twipsY -
                         double{Get<platform::Place>(Property::kPlace).top};
        if (std::abs(y - grip_) < this->desk().units.twipsY / 2) return;
        TellMouse(MouseAction::kMove, platform::kLeftButton, {});
    });
}

// By the bar's place in the model, which is finer than pixels.
void SplitterControl::TellMouse(MouseAction action, std::int32_t button,
                                Qt::KeyboardModifiers keys) {
    const auto& place = Get<platform::Place>(Property::kPlace);
    const float x = desk().units.TwipsX(pointer_.x()) - place.left;
    const float y = desk().units.TwipsY(pointer_.y()) - place.top;
    if (action == MouseAction::kDown) grip_ = y;
    Tell(platform::Mouse{window(), id(), action, button, ShiftState(keys), x, y});
}

bool SplitterControl::Filter(QEvent& event) {
    const auto type = event.type();
    const bool isDown = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    const bool isUp = type == QEvent::MouseButtonRelease;
    if (!isDown && !isUp && type != QEvent::MouseMove) return false;
    const auto& mouse = static_cast<QMouseEvent&>(event);
    pointer_ = widget().mapToParent(mouse.position());
    if (mouse.button() == Qt::LeftButton) isDown ? again_.start() : again_.stop();
    const MouseAction action = isDown ? MouseAction::kDown
                               : isUp ? MouseAction::kUp
                                      : MouseAction::kMove;
    const std::int32_t button =
        action == MouseAction::kMove ? ButtonNumber(mouse.buttons()) : ButtonNumber(mouse.button());
    TellMouse(action, button, mouse.modifiers());
    return true;
}

}  // namespace korvane::qt
