// The windows' link to a view in another process, over the lives of that process.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bindings/view_link/held_events.h"
#include "bindings/view_link/remote_view.h"
#include "bindings/view_link/view_process.h"
#include "platform/window/windows.h"

namespace korvane::view_link {

// Has one view at a time or none. A view that is lost leaves the windows as they
// are; the next one that is started is told everything and shows them again.
//
// A program's own loop (pump.h) or another one drives it by fd, events,
// NextTimeout and OnReady. All calls are made on one thread.
class ViewLink {
public:
    // `command` starts a view: the path of its program, and arguments. Empty:
    // there is none but an adopted one.
    explicit ViewLink(std::vector<std::string> command, const LinkLimits& limits = {});
    // Ends the view, and waits for that no longer than the grace.
    ~ViewLink();
    ViewLink(const ViewLink&) = delete;
    ViewLink& operator=(const ViewLink&) = delete;

    // Starts a view when there is none, and returns at once; it has the windows
    // when it has introduced itself. Raises when it cannot be started.
    void Start();
    // Takes a view that somebody else has started, by its connected socket, in
    // place of any other. Raises when that is none.
    void Adopt(int socket);
    // Starts a view when there is none and waits for its introduction, so that
    // windows that are loaded from then on have their size. False when it was
    // lost at once. Raises when it cannot be started.
    bool EnsureView();
    // Ends the view, if any, as the destructor does; nothing is called.
    void Stop();

    // There is a view, introduced or not, whose loss was not told yet.
    bool HasView() const { return view_ != nullptr; }
    // How many views there have been.
    std::int32_t generation() const { return generation_; }
    // The process of the view when this link started it; 0 otherwise.
    pid_t viewProcess() const { return process_ ? process_->id() : 0; }
    // What the last view told of its desktop; before the first, an assumption.
    const platform::ViewMetrics& metrics() const { return metrics_; }
    // The view has told of its desktop and has the windows.
    bool IsWelcomed() const { return view_ && welcomed_ == generation_; }
    // The windows that are shown; null for none.
    platform::Windows* windows() const { return windows_; }

    // To the view, if there is one that has introduced itself.
    void Send(const platform::ToView& message);
    // Shown beside the windows, by a later view too.
    void ShowStatus(const std::u16string& text);

    // Why what the user does in windows that stay open cannot be carried out at the
    // moment; empty when it can. Then it is held, in its order, and the text stands in
    // the status's place; asked again at every turn. Windows that wait for an answer go
    // on. A view that goes takes with it what was held. Must not throw.
    std::function<std::u16string()> whyHeld;
    // The window in which the user did what is being carried out; 0 for none.
    platform::WindowId acting() const { return acting_; }

    // The view is gone and the windows no longer have it. May start another.
    std::function<void(Loss)> onLost;
    std::function<void(const platform::ViewMetrics&)> onMetrics;
    std::function<void(const platform::MessageAnswered&)> onAnswer;
    // See RemoteView::onQueued.
    std::function<void()> onQueued;

    // See RemoteView. Without a view there is no descriptor, and nothing or
    // little to wait for.
    int fd() const { return view_ ? view_->fd() : -1; }
    short events() const { return view_ ? view_->events() : short{0}; }
    std::optional<Clock::duration> NextTimeout() const;
    void OnReady();
    void Flush();
    // Waits until OnReady has something to do, and calls it.
    void WaitOnce();

private:
    friend class ShownWindows;

    void Connect(Socket socket);
    void Take(const platform::Event& event, const platform::View* origin);
    bool MustWait(const platform::Event& event) const;
    void Deliver(const platform::Event& event, const platform::View* origin, bool tellsBack);
    void Release();
    void ShowWhyHeld(const std::u16string& why);
    void TellStatus();
    void Welcome(const platform::ViewMetrics& metrics);
    void Abandon(Loss loss);
    void Retire();
    void ShowWindows(platform::Windows* windows);

    std::vector<std::string> command_;
    LinkLimits limits_;
    platform::Windows* windows_ = nullptr;
    platform::ViewMetrics metrics_;
    std::u16string status_;
    HeldEvents held_;
    std::u16string shownWhyHeld_;
    platform::WindowId acting_ = 0;
    std::int32_t generation_ = 0;
    std::int32_t welcomed_ = 0;             // the generation of the last that introduced itself
    std::unique_ptr<ViewProcess> process_;  // of the view, when we started it
    std::shared_ptr<RemoteView> view_;
    // Views that were lost while a call of theirs runs, and processes that were
    // killed and take their time.
    std::vector<std::shared_ptr<RemoteView>> retired_;
    std::vector<std::unique_ptr<ViewProcess>> ending_;
    int running_ = 0;  // calls of OnReady
};

// While it lives, the link's views show these windows.
class ShownWindows {
public:
    ShownWindows(ViewLink& link, platform::Windows& windows) : link_(link) {
        link_.ShowWindows(&windows);
    }
    ~ShownWindows() { link_.ShowWindows(nullptr); }
    ShownWindows(const ShownWindows&) = delete;
    ShownWindows& operator=(const ShownWindows&) = delete;

private:
    ViewLink& link_;
};

}  // namespace korvane::view_link
