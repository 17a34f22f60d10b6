// A port of this machine at which nobody may knock.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace korvane::test {

class Listener {
public:
    Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        listen(socket_, 8);
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
    }
    ~Listener() { close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::string Url(const char* file) const {
        return "http://127.0.0.1:" + std::to_string(port_) + "/" + file;
    }
    bool WasCalled() const {
        pollfd watched{socket_, POLLIN, 0};
        return poll(&watched, 1, 300) > 0;
    }
    // Takes one call, hangs up at once, and tells whether there was one.
    bool HangUp(int milliseconds) const {
        pollfd watched{socket_, POLLIN, 0};
        if (poll(&watched, 1, milliseconds) <= 0) return false;
        const int call = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
        if (call >= 0) close(call);
        return true;
    }

private:
    int socket_;
    int port_ = 0;
};

}  // namespace korvane::test
