// A web server for one test, on the loopback alone (web_server.py says what it
// answers).
#pragma once

#include <filesystem>
#include <string>

namespace korvane::test {

// Why there can be none here; empty when there can.
std::string WhyNoWebServer();

// A self-made certificate for `host` ("IP:127.0.0.1", "DNS:example.org") and its
// key.
struct Certificate {
    Certificate(const std::filesystem::path& folder, const std::string& host);
    std::filesystem::path file;
    std::filesystem::path key;
};

class WebServer {
public:
    // Without encryption.
    WebServer();
    explicit WebServer(const Certificate& certificate);
    ~WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    // "http://127.0.0.1:1234" and the path.
    std::u16string Address(const std::string& path) const;

private:
    void Start(std::string certificate, std::string key);

    std::string scheme_;
    std::string port_;
    int process_ = -1;
};

// An address on the loopback where nobody listens.
std::u16string RefusedAddress();

}  // namespace korvane::test
