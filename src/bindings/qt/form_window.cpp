#include "bindings/qt/form_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "bindings/qt/desktop.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/label_controls.h"
#include "bindings/qt/owners.h"
#include "bindings/qt/simple_controls.h"
#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::ControlDesign;
using platform::ControlId;
using platform::Place;
using platform::Property;
using platform::Shown;

FormWindow::FormWindow(Desk& desk, platform::WindowId window)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      desk_(desk),
      id_(window) {
    setObjectName(ToQt(State()->design.name));
    MakeControls();
    SetTabOrders();
    SetBuddies();
    noted_.set();
}

void FormWindow::MakeControls() {
    const auto count = static_cast<ControlId>(State()->controls.size());
    for (ControlId id = 1; id <= count; ++id) {
        controls_.push_back(NewControl(desk_, id_, id, this));
    }
}

void FormWindow::SetTabOrders() {
    std::vector<ControlView*> order;
    for (const auto& control : controls_) {
        if (control->design().tabIndex >= 0 && control->TakesFocus())
            order.push_back(control.get());
    }
    std::stable_sort(order.begin(), order.end(), [](const ControlView* a, const ControlView* b) {
        return a->design().tabIndex < b->design().tabIndex;
    });
    for (std::size_t k = 1; k < order.size(); ++k) {
        setTabOrder(&order[k - 1]->widget(), &order[k]->widget());
    }
}

// The access key of a label leads to what Tab would reach behind it; a label
// that Tab does not count leads to the control that is designed behind it.
void FormWindow::SetBuddies() {
    for (std::size_t k = 0; k < controls_.size(); ++k) {
        auto* label = dynamic_cast<LabelControl*>(controls_[k].get());
        if (!label || !HasMark(label->design().caption)) continue;
        const int own = label->design().tabIndex;
        ControlView* buddy = nullptr;
        for (std::size_t j = 0; j < controls_.size(); ++j) {
            ControlView* other = controls_[j].get();
            const int index = other->design().tabIndex;
            if (!other->TakesFocus() || (own >= 0 ? index <= own : j < k)) continue;
            const bool nearer = !buddy || (own >= 0 && index < buddy->design().tabIndex);
            if (nearer) buddy = other;
        }
        if (buddy) label->SetBuddy(&buddy->widget());
    }
}

ControlView* FormWindow::Find(ControlId control) const {
    if (control < 1 || static_cast<std::size_t>(control) > controls_.size()) return nullptr;
    return controls_[static_cast<std::size_t>(control) - 1].get();
}

void FormWindow::Note(const platform::Change& change) {
    const ControlId id = std::visit(
        [](const auto& what) {
            if constexpr (requires { what.control; }) {
                return what.control;
            } else {
                return platform::kFormItself;
            }
        },
        change);
    if (ControlView* control = Find(id)) return control->Note(change);
    if (const auto* set = std::get_if<platform::PropertySet>(&change)) {
        noted_.set(static_cast<std::size_t>(set->property));
    }
}

void FormWindow::NoteAll() {
    noted_.set(static_cast<std::size_t>(Property::kPlace));
    for (const auto& control : controls_) control->NoteAll();
    ShowStatus();
}

void FormWindow::Settle() {
    if (!State()) return;
    const bool locked = Get<bool>(Property::kUpdatesLocked);
    if (updatesEnabled() == locked) setUpdatesEnabled(!locked);
    if (locked) return;
    for (const auto& control : controls_) control->Settle();
    const auto show = [this](Property property) {
        const auto k = static_cast<std::size_t>(property);
        if (!noted_.test(k)) return;
        noted_.reset(k);
        Show(property);
    };
    for (std::size_t k = 0; k < noted_.size(); ++k) {
        const auto property = static_cast<Property>(k);
        if (property != Property::kShown && property != Property::kFocus) show(property);
    }
    // Behind all the rest: what is centred when it appears is not to be moved again.
    show(Property::kShown);
    show(Property::kFocus);
}

void FormWindow::Show(Property property) {
    switch (property) {
        case Property::kPlace:
        case Property::kResizable: ShowPlace(); break;
        case Property::kCaption:
            setWindowTitle(ToQt(Get<std::u16string>(Property::kCaption)));
            break;
        case Property::kEnabled: setEnabled(Get<bool>(Property::kEnabled)); break;
        case Property::kOwner: ShowOwner(); break;
        case Property::kShown: ShowHow(); break;
        case Property::kFocus: ShowFocus(); break;
        default: break;
    }
}

// ---- place ---------------------------------------------------------------

QSize FormWindow::ClientSize() const {
    const auto& place = Get<Place>(Property::kPlace);
    const auto& frame = State()->frame;
    const int status = status_ && status_->isVisibleTo(this) ? status_->height() : 0;
    const int width = desk_.units.PixelsX(double{place.width} - frame.left - frame.right);
    const int height = desk_.units.PixelsY(double{place.height} - frame.top - frame.bottom);
    // No desktop has windows beyond this, and Qt would fail on them.
    constexpr int kLargest = 16'000;
    return {std::clamp(width, 1, kLargest), std::clamp(height + status, 1, kLargest)};
}

void FormWindow::ShowPlace() {
    const auto& place = Get<Place>(Property::kPlace);
    const QSize size = ClientSize();
    const QPoint corner(desk_.units.PixelsX(place.left), desk_.units.PixelsY(place.top));
    if (Get<bool>(Property::kResizable)) {
        setMinimumSize(1, 1);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    } else {
        setFixedSize(size);
    }
    // Corner and size at once, both of the area within the frame, from the first
    // showing on: a window manager that is told a corner with the frame, and later
    // one without, moves the window by the frame in between.
    const QRect area(corner + FrameCorner(), size);
    if (geometry() != area || !testAttribute(Qt::WA_Moved)) setGeometry(area);
}

// From the frame's top left corner to the area's. Before the desktop has made the
// frame, what it is likely to be.
QPoint FormWindow::FrameCorner() const {
    const QMargins made = MadeFrame(windowHandle());
    const QMargins& frame = made.isNull() ? desk_.frame : made;
    return {frame.left(), frame.top()};
}

// Takes back what a frame of another size than expected has moved the window by.
void FormWindow::MeetFrame() {
    if (isFramed_ || MadeFrame(windowHandle()).isNull()) return;
    isFramed_ = true;
    if (FrameCorner() == expectedCorner_) return;
    const auto& place = Get<Place>(Property::kPlace);
    const QPoint corner(desk_.units.PixelsX(place.left), desk_.units.PixelsY(place.top));
    if (geometry().topLeft() != corner + expectedCorner_) return;
    const Desk::Quiet quiet(desk_);
    ShowPlace();
}

// What the pixels say where they differ from the state; the state's own twips
// where they do not, so that nothing drifts by rounding.
void FormWindow::TellPlace() {
    if (!State() || !isVisible() || isMinimized() || desk_.IsQuiet()) return;
    MeetFrame();
    const QPoint corner = geometry().topLeft() - FrameCorner();
    Place place = Get<Place>(Property::kPlace);
    const auto& frame = State()->frame;
    const auto& units = desk_.units;
    const QSize wanted = ClientSize();
    if (corner.x() != units.PixelsX(place.left)) place.left = units.TwipsX(corner.x());
    if (corner.y() != units.PixelsY(place.top)) place.top = units.TwipsY(corner.y());
    if (width() != wanted.width()) place.width = units.TwipsX(width()) + frame.left + frame.right;
    if (height() != wanted.height()) {
        const int status = status_ && status_->isVisibleTo(this) ? status_->height() : 0;
        place.height = units.TwipsY(height() - status) + frame.top + frame.bottom;
    }
    desk_.Tell(platform::FormPlaced{id_, place});
}

void FormWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    TellPlace();
}

void FormWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (status_) {
        status_->setGeometry(0, height() - status_->height(), width(), status_->height());
        ShowStatus();
    }
    TellPlace();
}

// In the middle of its owner, or of the screen for a window without.
void FormWindow::Centre() {
    const QWindow* owner = windowHandle()->transientParent();
    QRect area = owner ? owner->frameGeometry() : QRect();
    if (area.isEmpty()) area = screen()->availableGeometry();
    setGeometry(QRect(area.center() - QPoint(width() / 2, height() / 2), size()));
}

// ---- on the screen -------------------------------------------------------

void FormWindow::ShowHow() {
    const auto how = static_cast<Shown>(Get<std::int32_t>(Property::kShown));
    // The line changes the window's size, which is best done before the desktop
    // has framed it.
    ShowStatus();
    if (how == Shown::kHidden) {
        hide();
    } else if (!isVisible()) {
        Appear(how);
    }
}

void FormWindow::Appear(Shown how) {
    setWindowModality(how == Shown::kModal ? Qt::ApplicationModal : Qt::NonModal);
    winId();  // the window system's part is made now
    SetOwner(*windowHandle(), desk_.windowOf(Get<std::int64_t>(Property::kOwner)));
    const auto& place = Get<Place>(Property::kPlace);
    const auto& design = State()->design;
    const bool isPlaced = place.left != design.place.left || place.top != design.place.top;
    if (design.centred && !isPlaced) Centre();
    // Before it is shown: the toolkit would give it to another one in passing.
    if (!focusWidget()) FocusFirst();
    isFramed_ = false;
    expectedCorner_ = FrameCorner();
    show();
    for (const auto& control : controls_) control->Appeared();
}

// A window that is seen brings its new owner to the front with it. The keyboard stays
// where it is.
void FormWindow::ShowOwner() {
    if (!isVisible()) return;
    QWindow* const owner = desk_.windowOf(Get<std::int64_t>(Property::kOwner));
    if (!owner || owner == windowHandle()->transientParent()) return;
    SetOwner(*windowHandle(), owner);
    owner->raise();
    raise();
}

// What comes first in the order of Tab, wherever it stands in the window.
void FormWindow::FocusFirst() {
    ControlView* first = nullptr;
    for (const auto& control : controls_) {
        const int index = control->design().tabIndex;
        if (index < 0 || !control->TakesFocus() || !control->widget().isEnabled()) continue;
        if (control->widget().isHidden()) continue;
        if (!first || index < first->design().tabIndex) first = control.get();
    }
    if (first) first->widget().setFocus(Qt::TabFocusReason);
}

void FormWindow::ShowFocus() {
    if (ControlView* control = Find(Get<std::int32_t>(Property::kFocus))) {
        control->widget().setFocus(Qt::OtherFocusReason);
    }
}

void FormWindow::TellFocus() {
    for (const auto& control : controls_) {
        if (&control->widget() != focusWidget()) continue;
        return desk_.Tell(platform::ControlFocused{id_, control->id()});
    }
}

void FormWindow::Reconcile() {
    if (!State() || !isVisible() || !updatesEnabled()) return;
    if (isActiveWindow() && !toldActive_) {
        toldActive_ = true;
        desk_.Tell(platform::FormActivated{id_});
    }
    TellPlace();
    if (State()) TellFocus();
    for (const auto& control : controls_) {
        if (State()) control->Reconcile();
    }
}

void FormWindow::Retire() {
    hide();
    const QSignalBlocker blocked(this);
}

void FormWindow::SetStatus(const QString& text) {
    statusText_ = text;
    if (State()) ShowStatus();
}

// The window grows by the line: its design leaves no room for it.
void FormWindow::ShowStatus() {
    const bool stays = static_cast<Shown>(Get<std::int32_t>(Property::kShown)) == Shown::kModeless;
    const bool wanted = stays && !statusText_.isEmpty();
    if (!status_ && !wanted) return;
    if (!status_) {
        status_ = new QLabel(this);
        status_->setTextFormat(Qt::PlainText);
        status_->setIndent(8);
        status_->setFixedHeight(status_->fontMetrics().height() + 8);
        status_->hide();
    }
    const QString shown =
        status_->fontMetrics().elidedText(statusText_, Qt::ElideMiddle, width() - 16);
    status_->setText(shown);
    status_->setToolTip(shown == statusText_ ? QString() : statusText_);
    status_->setAccessibleName(statusText_);
    if (status_->isVisibleTo(this) == wanted) return;
    status_->setVisible(wanted);
    const Desk::Quiet quiet(desk_);
    ShowPlace();
    status_->setGeometry(0, height() - status_->height(), width(), status_->height());
}

// ---- the user ------------------------------------------------------------

bool FormWindow::event(QEvent* event) {
    const bool done = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate) {
        if (!desk_.IsQuiet()) Reconcile();
    } else if (event->type() == QEvent::WindowDeactivate) {
        toldActive_ = false;
    }
    return done;
}

// It goes when the model says so.
void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    desk_.Tell(platform::CloseAsked{id_, true});
}

// What the control with the focus leaves over. Not the base class's: that closes
// dialogs by itself.
void FormWindow::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (event->modifiers() & ~Qt::KeypadModifier || event->isAutoRepeat()) return;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: Press(&ControlDesign::isDefault); break;
        case Qt::Key_Escape: Press(&ControlDesign::isCancel); break;
        default: break;
    }
}

void FormWindow::Press(bool ControlDesign::*role) {
    for (const auto& control : controls_) {
        if (!(control->design().*role)) continue;
        if (auto* button = qobject_cast<QPushButton*>(&control->widget())) {
            if (button->isVisible()) return button->click();
        }
    }
}

}  // namespace korvane::qt
