// One end of a connected stream of bytes. Nothing here ever waits.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace korvane::view_link {

class Socket {
public:
    // Takes over the descriptor; a negative one is none.
    explicit Socket(int number = -1) : number_(number) {}
    ~Socket() { Close(); }
    Socket(Socket&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Socket& operator=(Socket&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    // Negative when closed.
    int number() const { return number_; }
    void Close();

    enum class Got { kSome, kNothing, kEnd };
    // Appends some of what has come, at most `most` bytes. kEnd when the other
    // end is gone and all that it sent was taken.
    Got Receive(std::string& bytes, std::size_t most) const;
    // How many bytes were taken, 0 when none can be at the moment; nothing when
    // the other end is gone.
    std::optional<std::size_t> Send(std::string_view bytes) const;

private:
    int number_;
};

// Two ends connected to each other, neither inherited by programs that this
// process starts. Raises.
std::pair<Socket, Socket> ConnectedSockets();

// Takes over a descriptor that somebody else has connected. Raises, and leaves
// it as it is, when it is no stream socket.
Socket AdoptSocket(int number);

}  // namespace korvane::view_link
