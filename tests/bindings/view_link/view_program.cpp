// A view as a program of its own, as good or bad as its first argument says.
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>
#include <string>

#include "platform/window/codec.h"
#include "platform/window/state.h"

namespace {

using namespace korvane::platform;

constexpr int kLink = 3;

void SayBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(kLink, bytes.data(), bytes.size());
        if (count <= 0) ::_exit(0);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Say(const FromView& message) {
    std::string frame;
    AppendFrame(frame, Encode(message));
    SayBytes(frame);
}

void Introduce(std::int32_t protocol = kLinkProtocol) {
    ViewMetrics metrics;
    metrics.protocol = protocol;
    metrics.twipsPerPixelX = 12;
    metrics.twipsPerPixelY = 10;
    metrics.frame = {60, 400, 60, 60};
    metrics.monitors = {{{0, 0, 1000, 800}, {0, 20, 1000, 800}}};
    Say(metrics);
}

// The control that an event of the echo is about: a text box of the first window.
void SayText(const std::u16string& text) { Say(Event(TextEdited{1, 5, text})); }

struct Manner {
    bool answersPings = true;
    bool answersBoxes = false;
    bool echoes = false;         // each caption of control 7 comes back as typed text
    int sleepsMicroseconds = 0;  // between reads of a few bytes
};

// Follows the link until it ends.
void Follow(const Manner& manner) {
    std::string bytes;
    WindowsMirror mirror;
    for (;;) {
        char block[4096];
        const ssize_t count = ::read(kLink, block, sizeof block);
        if (count <= 0) return;
        bytes.append(block, static_cast<std::size_t>(count));
        std::string_view rest = bytes;
        std::string_view frame;
        while (TakeFrame(rest, frame) == FrameState::kWhole) {
            const auto message = DecodeToView(frame);
            if (!message) ::_exit(2);
            if (const auto* change = std::get_if<Change>(&*message)) {
                if (!mirror.TryApply(*change)) ::_exit(3);
                const auto* set = std::get_if<PropertySet>(change);
                if (manner.echoes && set && set->property == Property::kCaption) {
                    SayText(std::get<std::u16string>(set->value));
                }
            } else if (const auto* ping = std::get_if<Ping>(&*message)) {
                if (manner.answersPings) Say(Pong{ping->number});
            } else if (const auto* asked = std::get_if<MessageAsked>(&*message)) {
                if (manner.answersBoxes) Say(MessageAnswered{asked->id, MessageAnswer::kYes});
            }
        }
        bytes.erase(0, bytes.size() - rest.size());
        if (manner.sleepsMicroseconds > 0) ::usleep(manner.sleepsMicroseconds);
    }
}

// What this program was given: open descriptors, blocked and ignored signals.
std::u16string Inheritance() {
    std::u16string text;
    DIR* folder = ::opendir("/proc/self/fd");
    for (int number = 0; number < 256; ++number) {
        if (number != ::dirfd(folder) && ::fcntl(number, F_GETFD) != -1) {
            text += static_cast<char16_t>(u'0' + number);
        }
    }
    sigset_t mask;
    ::sigprocmask(SIG_SETMASK, nullptr, &mask);
    text += ::sigismember(&mask, SIGUSR1) ? u" blocked" : u"";
    struct sigaction action {};
    ::sigaction(SIGUSR2, nullptr, &action);
    text += action.sa_handler == SIG_IGN ? u" ignored" : u"";
    return text;
}

void Garbage() {
    std::mt19937 random(static_cast<unsigned>(::getpid()));
    std::string bytes(5000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    SayBytes(bytes);
}

int Run(const std::string& mode) {
    if (mode == "dies") return 1;
    if (mode == "mute") return ::pause();
    if (mode == "unreadable") {
        Garbage();
        return ::pause();
    }
    Introduce(mode == "foreign" ? kLinkProtocol + 1 : kLinkProtocol);
    Manner manner;
    if (mode == "inherits") SayText(Inheritance());
    if (mode == "garbage") Garbage();
    if (mode == "half") return SayBytes(std::string("\x40\0\0\0half", 8)), 1;
    if (mode == "stops") ::raise(SIGSTOP);
    if (mode == "deaf") return ::pause();
    if (mode == "floods") {
        for (;;) SayText(u"flood");
    }
    manner.answersBoxes = mode == "answers";
    manner.echoes = mode == "echoes";
    manner.sleepsMicroseconds = mode == "slow" ? 200 : 0;
    Follow(manner);
    if (mode == "stays") return ::pause();
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    // Nothing is left behind, whatever becomes of the test.
    ::alarm(120);
    return Run(count > 1 ? arguments[1] : "follows");
}
