// All windows as Qt widgets. Runs on Qt's main thread, in whatever process the
// application object lives in.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "bindings/qt/active_window.h"
#include "bindings/qt/desk.h"
#include "bindings/qt/form_window.h"
#include "bindings/qt/lost_windows.h"
#include "bindings/qt/message_box.h"
#include "platform/window/link.h"
#include "platform/window/view.h"

namespace korvane::qt {

// Shows changes soon after they were applied, many together and before anything
// is painted; what the user does is told within the toolkit's own events, never
// within Apply.
class QtView : public QObject, public platform::View {
public:
    // Each may be empty. May apply changes, and may not destroy the view.
    struct Listener {
        std::function<void(const platform::Event&)> event;
        std::function<void(const platform::MessageAnswered&)> answer;
        // The desktop's font, colours, monitors or frames are other ones now.
        std::function<void(const platform::ViewMetrics&)> metrics;
    };
    // The application object must be there already, and outlives the view.
    explicit QtView(Listener listener);
    ~QtView() override;

    void Apply(const platform::Change& change) override;
    void Ask(const platform::MessageAsked& message);
    void Drop(const platform::MessageDropped& message) { messages_.Drop(message.id); }
    void ShowStatus(const platform::StatusShown& status);
    void WantAnswer(const platform::AnswerWanted& wanted);
    // Shows now what was applied so far, and tells what the desktop made of it.
    void Settle();

    platform::ViewMetrics Metrics() const;
    // Where the pictures (SVG) come from that windows name; outlives the view. To
    // be told before there are windows.
    void SetPictures(platform::Resources& pictures) { desk_.pictures = &pictures; }

    // For tests and for programs that run in process. Null when there is none.
    FormWindow* Find(platform::WindowId window) const;
    QMessageBox* FindMessage(std::int32_t id) const { return messages_.Find(id); }
    const platform::WindowsMirror& mirror() const { return desk_.mirror(); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void SettleSoon();
    void LearnFrame(const FormWindow& form);
    void LookAtDesktop();
    void LookAtKeyboard();
    void KeepKeyboard();
    void TellMetrics();
    void Focus(std::int64_t handle);
    QWindow* WindowOf(std::int64_t handle);
    void LoseWindow(quintptr window);

    Listener listener_;
    Desk desk_;
    AskedMessages messages_;
    std::map<platform::WindowId, std::unique_ptr<FormWindow>> forms_;
    std::vector<QPointer<FormWindow>> retired_;  // on their way out
    std::map<std::int64_t, std::unique_ptr<QWindow>> foreign_;
    QString status_;
    QMargins frame_;
    platform::ViewMetrics told_;
    std::optional<std::int64_t> focus_;  // to be given
    QPointer<QWindow> waitsAbove_;       // the host's window, while something waits
    ActiveWindow active_{[this] { KeepKeyboard(); }};
    LostWindows lost_{[this](quintptr window) { LoseWindow(window); }};
    bool settlesSoon_ = false;
    bool desktopChanged_ = false;
};

}  // namespace korvane::qt
