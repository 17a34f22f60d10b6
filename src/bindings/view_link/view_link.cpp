#include "bindings/view_link/view_link.h"

#include <poll.h>

#include <utility>

#include "base/error.h"
#include "bindings/view_link/metrics.h"
#include "bindings/view_link/waiting.h"

namespace korvane::view_link {

using platform::View;

ViewLink::ViewLink(std::vector<std::string> command, const LinkLimits& limits)
    : command_(std::move(command)), limits_(limits), metrics_(AssumedMetrics()) {}

ViewLink::~ViewLink() { Stop(); }

// ---- views come ----------------------------------------------------------

void ViewLink::Start() {
    if (view_ && !view_->alive()) OnReady();  // tells its loss
    if (view_) return;
    if (command_.empty()) throw Error(kErrorApplication, u"There is no view to show windows");
    auto process = std::make_unique<ViewProcess>(command_);
    Connect(process->TakeLink());
    process_ = std::move(process);
}

void ViewLink::Adopt(int socket) {
    Socket adopted = AdoptSocket(socket);
    Stop();
    Connect(std::move(adopted));
}

void ViewLink::Connect(Socket socket) {
    view_ = std::make_shared<RemoteView>(std::move(socket), limits_);
    ++generation_;
    view_->onMetrics = [this](const auto& metrics) { Welcome(metrics); };
    view_->onEvent = [this](const platform::Event& event, const View* origin) {
        Take(event, origin);
    };
    view_->onAnswer = [this](const auto& answer) {
        if (onAnswer) onAnswer(answer);
    };
    view_->onLost = [this](Loss loss) { Abandon(loss); };
    view_->onQueued = [this] {
        if (onQueued) onQueued();
    };
}

// The view's first words, or later ones when its desktop has changed. Only now is
// it known to understand what it is told.
void ViewLink::Welcome(const platform::ViewMetrics& metrics) {
    metrics_ = metrics;
    const bool isFirst = std::exchange(welcomed_, generation_) != generation_;
    if (windows_) windows_->frame = metrics.frame;
    if (isFirst) {
        if (windows_) windows_->Attach(*view_);
        if (!status_.empty()) TellStatus();
    }
    if (onMetrics) onMetrics(metrics);
}

bool ViewLink::EnsureView() {
    Start();
    const std::int32_t wanted = generation_;
    while (view_ && generation_ == wanted && !IsWelcomed()) WaitOnce();
    return view_ && IsWelcomed();
}

void ViewLink::ShowWindows(platform::Windows* windows) {
    if (windows_ && view_) windows_->Detach(*view_);
    held_.Clear();
    windows_ = windows;
    if (!windows_) return;
    windows_->frame = metrics_.frame;
    if (IsWelcomed()) windows_->Attach(*view_);
}

// ---- views go ------------------------------------------------------------

void ViewLink::Abandon(Loss loss) {
    Retire();
    // Its link is closed, and nothing of it is worth waiting for.
    if (process_) {
        process_->Kill();
        ending_.push_back(std::move(process_));
    }
    if (onLost) onLost(loss);
}

void ViewLink::Retire() {
    held_.Clear();
    shownWhyHeld_.clear();
    if (windows_) windows_->Detach(*view_);
    retired_.push_back(std::move(view_));
    view_.reset();
}

void ViewLink::Stop() {
    if (view_) {
        view_->Flush();
        view_->Close();
        Retire();
    }
    if (process_) process_->End(limits_.endGrace);
    process_.reset();
    ending_.clear();
    if (running_ == 0) retired_.clear();
}

// ---- messages ------------------------------------------------------------

void ViewLink::Send(const platform::ToView& message) {
    if (IsWelcomed()) view_->Send(message);
}

void ViewLink::ShowStatus(const std::u16string& text) {
    status_ = text;
    TellStatus();
}

void ViewLink::TellStatus() {
    Send(platform::StatusShown{shownWhyHeld_.empty() ? status_ : shownWhyHeld_});
}

// ---- what has to wait ----------------------------------------------------

void ViewLink::Take(const platform::Event& event, const View* origin) {
    if (!windows_) return;
    if (!MustWait(event)) return Deliver(event, origin, false);
    if (held_.Add(event)) return;
    view_->Close();
    Abandon(Loss::kGarbage);
}

bool ViewLink::MustWait(const platform::Event& event) const {
    if (!whyHeld || HeldEvents::IsOfWindowAlone(event)) return false;
    // The windows know themselves what then reaches whom.
    if (windows_->IsModal()) return false;
    const auto id = std::visit([](const auto& what) { return what.window; }, event);
    const auto form = windows_->forms().find(id);
    if (form == windows_->forms().end()) return false;
    if (form->second->HowShown() != platform::Shown::kModeless) return false;
    return !held_.empty() || !whyHeld().empty();
}

void ViewLink::Deliver(const platform::Event& event, const View* origin, bool tellsBack) {
    struct Acting {
        platform::WindowId& now;
        platform::WindowId before;
        ~Acting() { now = before; }
    } acting{acting_, acting_};
    acting_ = std::visit([](const auto& what) { return what.window; }, event);
    windows_->Deliver(event, origin, tellsBack);
}

// One at each turn, so that what else comes is not kept from its own.
void ViewLink::Release() {
    if (held_.empty()) return ShowWhyHeld({});
    if (!windows_ || windows_->IsModal()) return;
    const auto why = whyHeld ? whyHeld() : std::u16string();
    ShowWhyHeld(why);
    if (!why.empty()) return;
    const auto event = held_.Take();
    // The windows have changed since the view showed its user's doing.
    Deliver(event, view_.get(), true);
}

void ViewLink::ShowWhyHeld(const std::u16string& why) {
    if (shownWhyHeld_ == why) return;
    shownWhyHeld_ = why;
    TellStatus();
}

// ---- the loop ------------------------------------------------------------

std::optional<Clock::duration> ViewLink::NextTimeout() const {
    std::optional<Clock::duration> next;
    if (view_) next = view_->NextTimeout();
    constexpr std::chrono::milliseconds kEndSoon{5};
    if (!ending_.empty() && (!next || *next > kEndSoon)) next = kEndSoon;
    // The host does not tell when it has time again. A window of ours that waits does.
    constexpr std::chrono::milliseconds kLookSoon{100};
    const bool looks = !held_.empty() && windows_ && !windows_->IsModal();
    const auto look = shownWhyHeld_.empty() ? Clock::duration::zero() : Clock::duration(kLookSoon);
    if (looks && (!next || *next > look)) next = look;
    return next;
}

void ViewLink::OnReady() {
    std::erase_if(ending_, [](const auto& process) { return process->HasEnded(); });
    if (!view_) return;
    struct Running {
        ViewLink& link;
        explicit Running(ViewLink& which) : link(which) { ++link.running_; }
        ~Running() {
            if (--link.running_ == 0) link.retired_.clear();
        }
    } running(*this);
    // Within the call the view may be lost and another one take its place.
    const std::shared_ptr<RemoteView> view = view_;
    view->OnReady();
    Release();
}

void ViewLink::Flush() {
    if (view_) view_->Flush();
}

void ViewLink::WaitOnce() {
    pollfd link{fd(), events(), 0};
    ::poll(&link, 1, PollTimeout(NextTimeout()));
    OnReady();
}

}  // namespace korvane::view_link
