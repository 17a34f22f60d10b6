#include "bindings/view_link/socket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "bindings/view_link/failure.h"

namespace korvane::view_link {
namespace {

bool MeansLater(int code) {
    return code == EAGAIN || code == EWOULDBLOCK || code == ENOBUFS || code == ENOMEM;
}

}  // namespace

void Socket::Close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
}

// The calls are told not to wait one by one: the descriptor's own flag would be
// shared with whoever has another copy of it.
Socket::Got Socket::Receive(std::string& bytes, std::size_t most) const {
    const std::size_t before = bytes.size();
    bytes.resize(before + most);
    ssize_t count = 0;
    do {
        count = ::recv(number_, bytes.data() + before, most, MSG_DONTWAIT);
    } while (count < 0 && errno == EINTR);
    const int code = errno;
    bytes.resize(before + static_cast<std::size_t>(count > 0 ? count : 0));
    if (count > 0) return Got::kSome;
    return count < 0 && MeansLater(code) ? Got::kNothing : Got::kEnd;
}

std::optional<std::size_t> Socket::Send(std::string_view bytes) const {
    ssize_t count = 0;
    do {
        count = ::send(number_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    } while (count < 0 && errno == EINTR);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (MeansLater(errno)) return 0;
    return std::nullopt;
}

std::pair<Socket, Socket> ConnectedSockets() {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw SystemFailure(errno, "socketpair");
    }
    return {Socket(ends[0]), Socket(ends[1])};
}

Socket AdoptSocket(int number) {
    int type = 0;
    socklen_t size = sizeof type;
    if (::getsockopt(number, SOL_SOCKET, SO_TYPE, &type, &size) != 0) {
        throw SystemFailure(errno, "The view's link");
    }
    if (type != SOCK_STREAM) throw SystemFailure(EPROTOTYPE, "The view's link");
    ::fcntl(number, F_SETFD, FD_CLOEXEC);
    return Socket(number);
}

}  // namespace korvane::view_link
