#include "bindings/curl/web_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "base/text.h"

namespace korvane::test {
namespace {

constexpr const char* kPython = "/usr/bin/python3";

bool Runs(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

// Up to the end of the line.
std::string ReadLine(int file) {
    std::string line;
    for (char byte = 0; ::read(file, &byte, 1) == 1 && byte != '\n';) line += byte;
    return line;
}

}  // namespace

std::string WhyNoWebServer() {
    if (!Runs(std::string(kPython) + " -c 'import ssl'")) return "python3 is not installed";
    if (!Runs("openssl version")) return "openssl is not installed";
    return {};
}

Certificate::Certificate(const std::filesystem::path& folder, const std::string& host)
    : file(folder / "certificate.pem"), key(folder / "key.pem") {
    const bool made = Runs(
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2"
        " -subj /CN=test -addext subjectAltName=" +
        host + " -out '" + file.native() + "' -keyout '" + key.native() + "'");
    EXPECT_TRUE(made);
}

WebServer::WebServer() : scheme_("http") { Start("", ""); }

WebServer::WebServer(const Certificate& certificate) : scheme_("https") {
    Start(certificate.file.native(), certificate.key.native());
}

void WebServer::Start(std::string certificate, std::string key) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t parent = ::getpid();
    process_ = ::fork();
    ASSERT_GE(process_, 0);
    if (process_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(126);
        ::dup2(ends[1], 1);
        const char* arguments[] = {kPython, KORVANE_WEB_SERVER,
                                   certificate.empty() ? nullptr : certificate.c_str(), key.c_str(),
                                   nullptr};
        ::execv(kPython, const_cast<char**>(arguments));
        ::_exit(127);
    }
    ::close(ends[1]);
    port_ = ReadLine(ends[0]);
    ::close(ends[0]);
    ASSERT_FALSE(port_.empty());
}

WebServer::~WebServer() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

std::u16string WebServer::Address(const std::string& path) const {
    return ToUtf16(scheme_ + "://127.0.0.1:" + port_ + path);
}

// The port was free a moment ago, and the system gives the next program another.
std::u16string RefusedAddress() {
    const int file = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const general = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(::bind(file, general, size), 0);
    EXPECT_EQ(::getsockname(file, general, &size), 0);
    ::close(file);
    return ToUtf16("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)));
}

}  // namespace korvane::test
