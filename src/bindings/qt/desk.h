// What all windows of a view share: the copy of their state, the way to the
// model, and the scale.
#pragma once

#include <QMargins>
#include <QWindow>
#include <functional>
#include <optional>

#include "bindings/qt/units.h"
#include "platform/resources.h"
#include "platform/window/event.h"
#include "platform/window/state.h"

namespace korvane::qt {

class Desk {
public:
    explicit Desk(std::function<void(const platform::Event&)> tell) : tell_(std::move(tell)) {}

    // Null when the window or control is not there (any more).
    const platform::FormState* Find(platform::WindowId window) const;
    const platform::ControlState* Find(platform::WindowId window,
                                       platform::ControlId control) const;
    // False for a change that does not fit.
    bool Take(const platform::Change& change) { return mirror_.TryApply(change); }
    const platform::WindowsMirror& mirror() const { return mirror_; }

    // Tells the model what the user did and makes the same change here, because
    // the model does not tell a view's own doing back to it. Nothing is told
    // while widgets follow the model, nor what the state already says.
    void Tell(const platform::Event& event);
    // The same of what counts even when the state already says it: a click on
    // what is selected.
    void TellAlways(const platform::Event& event);
    bool IsQuiet() const { return quiet_ > 0; }

    // While one lives, what widgets do is the model's doing and not the user's.
    class Quiet {
    public:
        explicit Quiet(Desk& desk) : desk_(desk) { ++desk_.quiet_; }
        ~Quiet() { --desk_.quiet_; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        Desk& desk_;
    };

    Units units;
    // What the desktop's frames add to a window, as far as is known.
    QMargins frame;
    // Where pictures come from; null for nowhere.
    platform::Resources* pictures = nullptr;
    // The desktop's window that a handle stands for; null for none. The caller
    // does not own it.
    std::function<QWindow*(std::int64_t handle)> windowOf;

private:
    std::optional<platform::Change> ChangeOf(const platform::Event& event) const;
    bool Alters(const platform::Change& change) const;
    void Tell(const platform::Event& event, bool always);

    std::function<void(const platform::Event&)> tell_;
    platform::WindowsMirror mirror_;
    int quiet_ = 0;
};

}  // namespace korvane::qt
