#include "bindings/view_link/remote_view.h"

#include <poll.h>

#include <utility>
#include <variant>

#include "bindings/view_link/metrics.h"
#include "platform/window/codec.h"

namespace korvane::view_link {

using platform::Change;
using platform::ToView;

namespace {

// So much is sent without waiting for the end of what makes it: the view works
// on it meanwhile.
constexpr std::size_t kEnoughToSend = std::size_t{64} << 10;

}  // namespace

RemoteView::RemoteView(Socket link, const LinkLimits& limits)
    : link_(std::move(link)), queue_(limits.queueBytes), heartbeat_(limits, Clock::now()) {}

// ---- to the view ---------------------------------------------------------

void RemoteView::Queue(const ToView& message) noexcept {
    if (!alive() || broken_) return;
    const bool wasEmpty = queue_.empty();
    try {
        if (!Add(platform::Encode(message))) Lose(Loss::kOverfull);
        if (const auto* change = std::get_if<Change>(&message)) {
            crossings_.Add(*change, heartbeat_.next());
        }
    } catch (...) {
        // No memory. The view no longer knows what there is; a new one would.
        Lose(Loss::kOverfull);
    }
    if (wasEmpty && onQueued) onQueued();
}

bool RemoteView::Add(std::string_view message) {
    if (!queue_.Add(message)) return false;
    if (queue_.size() >= kEnoughToSend && !blocked_) SendQueued();
    return true;
}

void RemoteView::SendQueued() {
    const std::size_t before = queue_.size();
    const bool wasBlocked = blocked_;
    const auto flow = queue_.SendTo(link_);
    blocked_ = flow == SendQueue::Flow::kBlocked;
    // That the system keeps bytes for the view says nothing; that it has room
    // again does.
    if (wasBlocked && queue_.size() < before) heartbeat_.Move();
    if (flow == SendQueue::Flow::kBroken) {
        broken_ = true;
        queue_.Clear();
    }
}

void RemoteView::PingWhenDue(Clock::time_point now) {
    if (broken_ || heartbeat_.IsAwaiting()) return;
    if (crossings_.empty() && !heartbeat_.IsPingDue(now)) return;
    if (!Add(platform::Encode(ToView(platform::Ping{heartbeat_.Ping(now)})))) {
        Lose(Loss::kOverfull);
    }
}

void RemoteView::Flush() {
    if (!alive()) return;
    PingWhenDue(Clock::now());
    if (!queue_.empty()) SendQueued();
}

void RemoteView::Close() {
    reported_ = true;
    Lose(Loss::kEnded);
    link_.Close();
}

// ---- from the view -------------------------------------------------------

void RemoteView::Receive() {
    if (inbox_.IsReady()) return;
    const auto got = inbox_.ReadFrom(link_);
    const bool isOver = got == Socket::Got::kEnd || (got == Socket::Got::kNothing && broken_);
    if (isOver) Lose(Loss::kEnded);
}

void RemoteView::HandleOne() {
    platform::FromView message;
    switch (inbox_.Take(message)) {
        case Inbox::Taken::kNothing: return;
        case Inbox::Taken::kGarbage: return Lose(Loss::kGarbage);
        case Inbox::Taken::kMessage: break;
    }
    Handle(message);
}

void RemoteView::Handle(const platform::FromView& message) {
    if (!introduced_ && !std::holds_alternative<platform::ViewMetrics>(message)) {
        return Lose(Loss::kGarbage);
    }
    std::visit([this](const auto& what) { Take(what); }, message);
}

void RemoteView::Take(const platform::ViewMetrics& metrics) {
    if (metrics.protocol != platform::kLinkProtocol) return Lose(Loss::kProtocol);
    if (!IsSensible(metrics)) return Lose(Loss::kGarbage);
    heartbeat_.Introduce();
    introduced_ = true;
    if (metrics_ == metrics) return;
    metrics_ = metrics;
    if (onMetrics) onMetrics(metrics);
}

void RemoteView::Take(const platform::Event& event) {
    const platform::View* origin = crossings_.Crosses(event) ? nullptr : this;
    if (onEvent) onEvent(event, origin);
}

void RemoteView::Take(const platform::MessageAnswered& answer) {
    if (onAnswer) onAnswer(answer);
}

void RemoteView::Take(const platform::Pong& pong) {
    if (heartbeat_.Answer(pong.number)) crossings_.Settle(pong.number);
}

// ---- the loop ------------------------------------------------------------

short RemoteView::events() const {
    return static_cast<short>(queue_.empty() ? POLLIN : POLLIN | POLLOUT);
}

Clock::duration RemoteView::NextTimeout() const {
    if (loss_) return reported_ ? Clock::duration::max() : Clock::duration::zero();
    if (inbox_.IsReady() || broken_) return {};
    return heartbeat_.NextTimeout(Clock::now());
}

void RemoteView::OnReady() {
    if (alive()) Receive();
    if (alive()) HandleOne();
    Flush();
    if (alive()) Judge(Clock::now());
    ReportLoss();
}

void RemoteView::Judge(Clock::time_point now) {
    heartbeat_.Watch(now);
    // The answer may stand behind what was not handled yet.
    const int patience = inbox_.IsReady() ? 4 : 1;
    if (heartbeat_.IsOver(patience)) Lose(Loss::kStalled);
}

void RemoteView::Lose(Loss loss) {
    if (loss_) return;
    loss_ = loss;
    queue_.Clear();
}

void RemoteView::ReportLoss() {
    if (!loss_ || std::exchange(reported_, true)) return;
    link_.Close();
    if (onLost) onLost(*loss_);
}

}  // namespace korvane::view_link
