#include "apps/office/conversation.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "apps/office/requests.h"
#include "bindings/calc/main_thread.h"

namespace korvane::office {
namespace {

namespace css = com::sun::star;

constexpr int kSocket = 3;

void Send(std::string_view line) {
    std::string text(line);
    text += '\n';
    std::size_t sent = 0;
    while (sent < text.size()) {
        const ssize_t count = send(kSocket, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;  // the reader notices too, and ends the process
        sent += static_cast<std::size_t>(count);
    }
}

// Answers one line, on the office's main thread.
void Answer(Requests& requests, const std::string& line) {
    try {
        Send(requests.Handle(line));
    } catch (...) {
        // Closing the socket ends this process, and tells the other side.
        shutdown(kSocket, SHUT_RDWR);
    }
}

// Nobody waits for this process any more. It has nothing to save, and an
// orderly end could wait for a calculation that goes on for minutes.
[[noreturn]] void EndProcess() {
    if (const char* const folder = std::getenv("KORVANE_FOLDER")) {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    _exit(0);
}

void Read(const css::uno::Reference<css::uno::XComponentContext>& context,
          const std::shared_ptr<Requests>& requests) {
    const calc::MainThread thread(context);
    Send(R"({"ok":true})");
    std::string received;
    for (;;) {
        char buffer[65'536];
        const ssize_t count = recv(kSocket, buffer, sizeof buffer, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        received.append(buffer, static_cast<std::size_t>(count));
        for (auto end = received.find('\n'); end != std::string::npos; end = received.find('\n')) {
            thread.Post([requests, line = received.substr(0, end)] { Answer(*requests, line); });
            received.erase(0, end + 1);
        }
    }
}

}  // namespace

void StartConversation(const css::uno::Reference<css::uno::XComponentContext>& context) {
    auto requests = std::make_shared<Requests>(context);
    std::thread([context, requests] {
        try {
            Read(context, requests);
        } catch (...) {
            // Without a reader nobody can reach this process.
        }
        EndProcess();
    }).detach();
}

void RefuseConversation(const std::string& why) {
    const nlohmann::ordered_json refusal{{"error", {{"message", why}}}};
    Send(refusal.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
    EndProcess();
}

}  // namespace korvane::office
