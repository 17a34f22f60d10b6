#include "apps/view/connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/window/codec.h"

namespace korvane::view {
namespace {

// Who leaves so much unread will not read any of it.
constexpr std::size_t kMostUnread = std::size_t{16} << 20;

bool IsForLater(int code) { return code == EAGAIN || code == EWOULDBLOCK || code == EINTR; }

}  // namespace

Connection::Connection(int descriptor)
    : descriptor_(descriptor),
      readable_(descriptor, QSocketNotifier::Read),
      writable_(descriptor, QSocketNotifier::Write) {
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    writable_.setEnabled(false);
    QObject::connect(&readable_, &QSocketNotifier::activated, [this] { Read(); });
    QObject::connect(&writable_, &QSocketNotifier::activated, [this] { Write(); });
}

void Connection::Finish(End end) {
    if (std::exchange(ended_, true)) return;
    readable_.setEnabled(false);
    writable_.setEnabled(false);
    if (onEnd) onEnd(end);
}

// One buffer at a time, so that the user's events get their turn.
void Connection::Read() {
    std::array<char, 1 << 16> buffer;  // NOLINT: read fills what is used of it
    const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
    if (count < 0 && IsForLater(errno)) return;
    if (count <= 0) return Finish(End::kClosed);
    incoming_.append(buffer.data(), static_cast<std::size_t>(count));
    TakeMessages();
}

void Connection::TakeMessages() {
    std::string_view rest = incoming_;
    std::string_view bytes;
    platform::FrameState state = platform::FrameState::kUnfinished;
    while (!ended_ && (state = platform::TakeFrame(rest, bytes)) == platform::FrameState::kWhole) {
        const auto message = platform::DecodeToView(bytes);
        if (!message) return Finish(End::kGarbage);
        if (onMessage) onMessage(*message);
    }
    if (state == platform::FrameState::kBroken) return Finish(End::kGarbage);
    incoming_.erase(0, incoming_.size() - rest.size());
}

void Connection::Send(const platform::FromView& message) {
    if (ended_) return;
    platform::AppendFrame(outgoing_, platform::Encode(message));
    if (outgoing_.size() > kMostUnread) return Finish(End::kClosed);
    // Not from within the call: whoever sends may be in the middle of something.
    writable_.setEnabled(true);
}

void Connection::Write() {
    // A peer that is gone is no reason for a signal.
    const ssize_t count = ::send(descriptor_, outgoing_.data(), outgoing_.size(), MSG_NOSIGNAL);
    if (count < 0 && IsForLater(errno)) return;
    if (count < 0) return Finish(End::kClosed);
    outgoing_.erase(0, static_cast<std::size_t>(count));
    if (outgoing_.empty()) writable_.setEnabled(false);
}

}  // namespace korvane::view
