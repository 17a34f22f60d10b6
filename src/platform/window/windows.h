// The system's windows: loads them, tells views of changes, and brings events.
//
// There may be no view, one, or several; the windows do not depend on any. All
// calls are made on one thread.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/modal.h"
#include "platform/window/event.h"
#include "platform/window/form.h"
#include "platform/window/view.h"

namespace korvane::platform {

class Windows {
public:
    // `modal` waits for the user; outlives the windows.
    explicit Windows(ModalLoop& modal) : modal_(modal) {}
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    // All forms must be gone by now.
    ~Windows();

    // What a frame adds to a window's client area on this desktop. Read when a
    // window is loaded.
    FrameSize frame;

    // Makes a window, hidden. The caller owns it; letting go of it closes it
    // without asking. Raises when the window system refuses.
    std::unique_ptr<Form> Load(const FormDesign& design);
    // The open windows by their numbers, the oldest first.
    const std::map<WindowId, Form*>& forms() const { return forms_; }
    // Null when no open window has this handle.
    Form* FindForm(std::int64_t handle) const;

    // Gives the keyboard focus to a window, one of the system's or another.
    void SetFocus(std::int64_t handle);
    // Keeps views from painting a window while it changes much at once; ends the
    // lock of any other. Null ends it; refused, it ends all the same.
    void LockUpdates(Form* form);

    // A view hears of every change from now on, and first of changes that tell
    // it what there is. It must be detached before it dies.
    void Attach(View& view);
    void Detach(View& view);

    // Brings an event: the window's state is updated and its handler runs, after
    // those of earlier events; an event that comes while a handler runs waits
    // for its end. An event that does not fit is dropped. `origin` is the view
    // that it comes from, which is not told its own doing; null for none. With
    // `tellsBack` it is told all the same, because it may have been told something
    // else since.
    void Deliver(const Event& event, const View* origin = nullptr, bool tellsBack = false);
    // A window or message box waits for its answer, and the user reaches no other.
    bool IsModal() const { return !modalForms_.empty(); }

    // Keeps `object` until no handler runs any more, then lets go of it: for
    // what owns a window and closes it from one of its handlers.
    void LetGoLater(std::shared_ptr<void> object);

    ModalLoop& modal() const { return modal_; }

    // Called with the name of every member that a window system may refuse; may
    // raise, and the member then does nothing. Empty: none is refused. Tests
    // make calls fail here.
    std::function<void(const char* member)> onCall;

    // For forms and their controls.
    void Call(const char* member) const {
        if (onCall) onCall(member);
    }
    void Register(Form& form);
    void Unregister(Form& form);
    void Tell(const Change& change, Source source);

private:
    friend class ModalScope;
    struct Waiting {
        Event event;
        const View* origin;
        bool tellsBack;
    };

    void Run(const Waiting& waiting);
    void Correct(const Event& event, const View* origin);
    bool IsReached(const Form& form, const Event& event) const;
    void TellAll(View& view, const Form& form) const;

    ModalLoop& modal_;
    std::map<WindowId, Form*> forms_;
    WindowId lastId_ = 0;
    std::vector<View*> views_;
    std::deque<Waiting> queue_;
    bool delivering_ = false;  // a handler runs, and no modal wait within it
    int handlers_ = 0;         // that have not returned, those that wait included
    const View* origin_ = nullptr;
    std::vector<const Form*> modalForms_;  // the innermost last; null for a message box
    Form* locked_ = nullptr;
    std::int64_t focused_ = 0;  // the handle that was given the focus last
    std::vector<std::shared_ptr<void>> leaving_;
};

// While it lives the user reaches `form` alone (null: no window at all, because
// a message box is open), and events are delivered although a handler runs.
class ModalScope {
public:
    ModalScope(Windows& windows, const Form* form);
    ~ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

private:
    Windows& windows_;
    bool delivering_;
    const View* origin_;
    std::deque<Windows::Waiting> waiting_;
};

}  // namespace korvane::platform
