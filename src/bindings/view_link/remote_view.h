// A view at the other end of a stream of bytes.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "bindings/view_link/crossings.h"
#include "bindings/view_link/heartbeat.h"
#include "bindings/view_link/inbox.h"
#include "bindings/view_link/limits.h"
#include "bindings/view_link/send_queue.h"
#include "bindings/view_link/socket.h"
#include "platform/window/link.h"
#include "platform/window/view.h"

namespace korvane::view_link {

// Nothing here waits for the view, and nothing that it does or sends can do
// harm: one that goes wrong is given up. Then nothing is sent or heard any more.
class RemoteView : public platform::View {
public:
    RemoteView(Socket link, const LinkLimits& limits);

    // Both put a message into the queue; OnReady and Flush send it.
    void Apply(const platform::Change& change) override { Queue(change); }
    void Send(const platform::ToView& message) { Queue(message); }

    // False from the moment on in which the view was given up.
    bool alive() const { return !loss_; }
    // Whether its first message has come.
    bool introduced() const { return introduced_; }

    // The first four callbacks run from OnReady alone, so they may do anything,
    // such as wait for the user with OnReady called again meanwhile; but the view
    // must outlive every OnReady that runs.

    // Never comes twice with equal content, and first of all.
    std::function<void(const platform::ViewMetrics&)> onMetrics;
    // `origin` is for Windows::Deliver.
    std::function<void(const platform::Event&, const platform::View* origin)> onEvent;
    std::function<void(const platform::MessageAnswered&)> onAnswer;
    // Once, behind everything else.
    std::function<void(Loss)> onLost;
    // The queue is no longer empty, so events() says something else than before:
    // for a loop that has asked already. Runs anywhere; must not throw and call
    // nothing here.
    std::function<void()> onQueued;

    // What to wait for: poll(2) these events of this descriptor (negative for
    // none), for no longer than this; then call OnReady.
    int fd() const { return link_.number(); }
    short events() const;
    Clock::duration NextTimeout() const;
    // Reads, handles one message at most, sends, and sees whether the view still
    // answers. Passes on what a callback raises.
    void OnReady();
    // Sends what the view takes now: for what the user is to see before a long
    // work begins.
    void Flush();
    // Ends the link without a word: nothing is called any more.
    void Close();

private:
    void Queue(const platform::ToView& message) noexcept;
    bool Add(std::string_view message);
    void Lose(Loss loss);
    void Receive();
    void HandleOne();
    void Handle(const platform::FromView& message);
    void Take(const platform::ViewMetrics& metrics);
    void Take(const platform::Event& event);
    void Take(const platform::MessageAnswered& answer);
    void Take(const platform::Pong& pong);
    void PingWhenDue(Clock::time_point now);
    void SendQueued();
    void Judge(Clock::time_point now);
    void ReportLoss();

    Socket link_;
    Inbox inbox_;
    SendQueue queue_;
    Heartbeat heartbeat_;
    Crossings crossings_;
    std::optional<platform::ViewMetrics> metrics_;
    std::optional<Loss> loss_;
    bool introduced_ = false;
    bool blocked_ = false;   // the view has to take something before more is sent
    bool broken_ = false;    // nothing can be sent; what has come is still read
    bool reported_ = false;  // the loss
};

}  // namespace korvane::view_link
