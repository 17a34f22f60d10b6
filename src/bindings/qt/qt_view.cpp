#include "bindings/qt/qt_view.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "bindings/qt/desktop.h"
#include "bindings/qt/owners.h"
#include "bindings/qt/text.h"
#include "platform/window/host_waits.h"

namespace korvane::qt {

using platform::WindowId;

QtView::QtView(Listener listener)
    : listener_(std::move(listener)),
      desk_([this](const platform::Event& event) {
          if (listener_.event) listener_.event(event);
      }),
      messages_([this](const platform::MessageAnswered& answer) {
          if (listener_.answer) listener_.answer(answer);
      }),
      frame_(LikelyFrame()) {
    desk_.units = UnitsOf(QApplication::font());
    desk_.frame = frame_;
    desk_.windowOf = [this](std::int64_t handle) { return WindowOf(handle); };
    told_ = Metrics();
    qApp->installEventFilter(this);
    const auto look = [this] { LookAtDesktop(); };
    connect(qApp, &QGuiApplication::screenAdded, this, look);
    connect(qApp, &QGuiApplication::screenRemoved, this, look);
    connect(qApp, &QGuiApplication::primaryScreenChanged, this, look);
    for (QScreen* screen : QGuiApplication::screens()) {
        connect(screen, &QScreen::geometryChanged, this, look);
        connect(screen, &QScreen::availableGeometryChanged, this, look);
    }
}

QtView::~QtView() {
    const Desk::Quiet quiet(desk_);
    forms_.clear();
    for (const auto& form : retired_) delete form;
}

FormWindow* QtView::Find(WindowId window) const {
    const auto found = forms_.find(window);
    return found == forms_.end() ? nullptr : found->second.get();
}

void QtView::Apply(const platform::Change& change) {
    if (!desk_.Take(change)) return;
    const WindowId id = platform::WindowOf(change);
    if (std::holds_alternative<platform::FormOpened>(change)) {
        auto form = std::make_unique<FormWindow>(desk_, id);
        form->SetStatus(status_);
        forms_[id] = std::move(form);
    } else if (std::holds_alternative<platform::FormClosed>(change)) {
        // One of its own events may be what closes it.
        FormWindow* form = forms_.at(id).release();
        forms_.erase(id);
        form->Retire();
        form->deleteLater();
        std::erase(retired_, nullptr);
        retired_.emplace_back(form);
    } else if (const auto* focus = std::get_if<platform::WindowFocused>(&change)) {
        focus_ = focus->handle;
    } else {
        forms_.at(id)->Note(change);
    }
    SettleSoon();
}

void QtView::SettleSoon() {
    if (std::exchange(settlesSoon_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { Settle(); }, Qt::QueuedConnection);
}

void QtView::Settle() {
    settlesSoon_ = false;
    if (std::exchange(desktopChanged_, false)) TellMetrics();
    {
        const Desk::Quiet quiet(desk_);
        for (const auto& [id, form] : forms_) form->Settle();
    }
    if (focus_) Focus(*std::exchange(focus_, std::nullopt));
    // What is told may close windows.
    std::vector<WindowId> ids;
    for (const auto& [id, form] : forms_) ids.push_back(id);
    for (const WindowId id : ids) {
        if (FormWindow* form = Find(id)) form->Reconcile();
        if (FormWindow* form = Find(id)) LearnFrame(*form);
    }
    LookAtKeyboard();
}

// The desktop may have left it where it was when it showed what waits now.
void QtView::LookAtKeyboard() {
    const QWidget* const front = QApplication::activeModalWidget();
    if (front && front->windowHandle()) {
        QWindow* bottom = front->windowHandle();
        while (bottom->transientParent()) bottom = bottom->transientParent();
        waitsAbove_ = bottom;
    }
    if (waitsAbove_) active_.Look();
}

// What waits keeps the keyboard. After it the host's window has it again, as after any
// dialog. The desktop may have given it to another one of the host's, which was still
// blocked and took no note of it, or, just when it chose the window by which the host
// waits and that ended, to nobody.
void QtView::KeepKeyboard() {
    if (!waitsAbove_) return;
    const auto holder = active_.Holder();
    const bool isByHost = holder && holder->title == platform::kHostWaits;
    if (QApplication::activeModalWidget()) {
        if (isByHost) WantAnswer({});
        return;
    }
    QWindow* const above = std::exchange(waitsAbove_, nullptr);
    if (holder && holder->window == above->winId()) return;
    const bool isHosts =
        holder && !holder->hasOwner && holder->process != 0 && holder->process == ProcessOf(*above);
    if (!holder || isByHost || isHosts) ActivateAny(*above);
}

// ---- the desktop ---------------------------------------------------------

platform::ViewMetrics QtView::Metrics() const { return MetricsOf(desk_.units, frame_); }

// How wide frames are is known once there is one.
void QtView::LearnFrame(const FormWindow& form) {
    if (!form.isVisible()) return;
    const QMargins frame = MadeFrame(form.windowHandle());
    if (frame.isNull() || frame == frame_) return;
    frame_ = desk_.frame = frame;
    TellMetrics();
}

void QtView::LookAtDesktop() {
    desktopChanged_ = true;
    SettleSoon();
}

void QtView::TellMetrics() {
    desk_.units = UnitsOf(QApplication::font());
    const auto now = Metrics();
    if (now == told_) return;
    told_ = now;
    if (listener_.metrics) listener_.metrics(now);
}

bool QtView::eventFilter(QObject* object, QEvent* event) {
    const bool changes = event->type() == QEvent::ApplicationPaletteChange ||
                         event->type() == QEvent::ApplicationFontChange;
    if (object == qApp && changes) {
        for (const auto& [id, form] : forms_) form->NoteAll();
        LookAtDesktop();
    }
    return false;
}

QWindow* QtView::WindowOf(std::int64_t handle) {
    if (handle > platform::kFirstOwnHandle) {
        const FormWindow* form = Find(static_cast<WindowId>(handle - platform::kFirstOwnHandle));
        return form ? form->windowHandle() : nullptr;
    }
    if (handle <= 0 || !KnowsForeignWindows()) return nullptr;
    auto& window = foreign_[handle];
    if (!window) window.reset(QWindow::fromWinId(static_cast<WId>(handle)));
    return window.get();
}

void QtView::Focus(std::int64_t handle) {
    QWindow* window = WindowOf(handle);
    if (!window) return;
    if (handle > platform::kFirstOwnHandle) window->raise();
    window->requestActivate();
}

// What another program took away is closed, as by its close box.
void QtView::LoseWindow(quintptr window) {
    for (const auto& [id, form] : forms_) {
        if (form->internalWinId() != window || !form->isVisible()) continue;
        // Not within the window system's own event.
        QMetaObject::invokeMethod(
            form.get(), [lost = form.get()] { lost->close(); }, Qt::QueuedConnection);
        return;
    }
}

// ---- beside the windows --------------------------------------------------

void QtView::Ask(const platform::MessageAsked& message) {
    Settle();  // the box comes after what was shown before
    QWidget* active = QApplication::activeWindow();
    messages_.Ask(message, active ? active->windowHandle() : WindowOf(message.owner));
    LookAtKeyboard();
}

// What waits may stand above another window that waits, and so on; the last of them is
// the one that stands above the host's.
void QtView::WantAnswer(const platform::AnswerWanted& wanted) {
    Settle();
    QWidget* const front = QApplication::activeModalWidget();
    if (!front || !front->windowHandle()) return;
    std::vector<QWindow*> chain;
    for (QWindow* one = front->windowHandle(); one && one->modality() != Qt::NonModal;
         one = one->transientParent()) {
        chain.push_back(one);
    }
    QWindow* const owner = WindowOf(wanted.owner);
    if (owner && !chain.empty()) SetOwner(*chain.back(), owner);
    for (auto one = chain.rbegin(); one != chain.rend(); ++one) (*one)->raise();
    front->windowHandle()->requestActivate();
}

void QtView::ShowStatus(const platform::StatusShown& status) {
    status_ = OnOneLine(status.text);
    for (const auto& [id, form] : forms_) form->SetStatus(status_);
}

}  // namespace korvane::qt
