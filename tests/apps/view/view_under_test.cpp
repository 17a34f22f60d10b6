#include "view_under_test.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace korvane::test {

ViewUnderTest::ViewUnderTest(std::vector<std::string> environment,
                             std::vector<std::string> arguments) {
    int ends[2] = {-1, -1};
    ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends);
    link_ = ends[0];
    std::vector<std::string> command{KORVANE_VIEW};
    command.insert(command.end(), arguments.begin(), arguments.end());
    process_ = std::make_unique<Child>(command, std::move(environment), ends[1]);
    ::close(ends[1]);
    windows.Attach(*this);
}

ViewUnderTest::~ViewUnderTest() {
    windows.Detach(*this);
    HangUp();
}

void ViewUnderTest::HangUp() {
    if (link_ >= 0) ::close(std::exchange(link_, -1));
}

void ViewUnderTest::Send(const platform::ToView& message) {
    std::string bytes;
    platform::AppendFrame(bytes, platform::Encode(message));
    SendBytes(bytes);
}

void ViewUnderTest::SendBytes(const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(link_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) return;
        sent += static_cast<std::size_t>(count);
    }
}

bool ViewUnderTest::TakeSome(std::chrono::milliseconds time) {
    pollfd wait{link_, POLLIN, 0};
    if (::poll(&wait, 1, static_cast<int>(time.count())) <= 0) return false;
    char buffer[4096];
    const ssize_t count = ::read(link_, buffer, sizeof buffer);
    if (count <= 0) return false;
    incoming_.append(buffer, static_cast<std::size_t>(count));
    std::string_view rest = incoming_;
    std::string_view bytes;
    std::vector<platform::FromView> messages;
    while (platform::TakeFrame(rest, bytes) == platform::FrameState::kWhole) {
        if (auto message = platform::DecodeFromView(bytes)) messages.push_back(*message);
    }
    incoming_.erase(0, incoming_.size() - rest.size());
    for (const auto& message : messages) Take(message);
    return true;
}

void ViewUnderTest::Take(const platform::FromView& message) {
    std::visit(
        [this](const auto& what) {
            using What = std::decay_t<decltype(what)>;
            if constexpr (std::is_same_v<What, platform::ViewMetrics>) {
                metrics.push_back(what);
                windows.frame = what.frame;
            } else if constexpr (std::is_same_v<What, platform::Event>) {
                events.push_back(what);
                windows.Deliver(what, this);
            } else if constexpr (std::is_same_v<What, platform::MessageAnswered>) {
                answers.push_back(what);
            } else {
                pongs.push_back(what.number);
            }
        },
        message);
}

bool ViewUnderTest::TakeUntil(const std::function<bool()>& done, std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!done()) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left <= 0ms || (!TakeSome(left) && link_ < 0)) return false;
    }
    return true;
}

bool ViewUnderTest::Settle() {
    bool answered = true;
    // What the first answer brings may have been changed in turn.
    for (int k = 0; k < 2; ++k) {
        Send(platform::Ping{++ping_});
        answered = TakeUntil([this] { return !pongs.empty() && pongs.back() == ping_; });
        TakeUntil([] { return false; }, 100ms);
    }
    return answered;
}

}  // namespace korvane::test
