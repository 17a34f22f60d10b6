// A view without windows in a thread of the test, with a user who does what the
// test says.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <utility>

#include "platform/window/codec.h"
#include "platform/window/state.h"

namespace korvane::window::test {

class UserView {
public:
    // `user` runs in the thread, once the view has introduced itself.
    explicit UserView(std::function<void(UserView&)> user) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        core_ = ends[0];
        own_ = ends[1];
        thread_ = std::thread([this, user = std::move(user)] {
            Introduce();
            user(*this);
            // Whoever waits for a user who has failed would wait for ever.
            if (::testing::Test::HasFatalFailure()) Leave();
            while (TakeSome(-1)) {
            }
        });
    }
    ~UserView() {
        CloseCoreEnd();
        thread_.join();
        ::close(own_);
    }
    UserView(const UserView&) = delete;
    UserView& operator=(const UserView&) = delete;

    // The core's end of the link.
    int coreEnd() const { return core_; }
    // Hands it over.
    int TakeCoreEnd() { return std::exchange(core_, -1); }
    void CloseCoreEnd() {
        if (core_ >= 0) ::close(TakeCoreEnd());
    }

    // ---- for the user ----

    // Takes what the core sends, until `done`; false when the link ends or that
    // takes too long.
    bool WaitUntil(const std::function<bool()>& done) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!done()) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            if (left.count() <= 0 || !TakeSome(static_cast<int>(left.count()))) return false;
        }
        return true;
    }
    bool WaitForStatus(const std::u16string& text) {
        return WaitUntil([&] { return status == text; });
    }
    bool WaitForWindows(std::size_t count) {
        return WaitUntil([&] { return mirror.forms().size() == count; });
    }
    void Do(const platform::Event& event) { Say(event); }
    // The same of one of a window's controls.
    template <class E>
    void Do(platform::WindowId window, const char16_t* control, E event) {
        event.window = window;
        event.control = IdOf(window, control);
        Say(platform::Event(event));
    }
    void Leave() { ::shutdown(own_, SHUT_RDWR); }

    const platform::ControlState& Control(platform::WindowId window, const char16_t* name) const {
        return mirror.forms().at(window).controls.at(static_cast<std::size_t>(IdOf(window, name)) -
                                                     1);
    }
    platform::WindowId newest() const { return mirror.forms().rbegin()->first; }

    platform::WindowsMirror mirror;
    std::u16string status;
    std::vector<std::u16string> boxes;  // that were shown, each answered at once

private:
    // Waits for something that the core sends; false when nothing came in time,
    // or nothing will.
    bool TakeSome(int milliseconds) {
        pollfd link{own_, POLLIN, 0};
        char block[4096];
        if (::poll(&link, 1, milliseconds) <= 0) return false;
        const ssize_t count = ::recv(own_, block, sizeof block, 0);
        if (count <= 0) return false;
        bytes_.append(block, static_cast<std::size_t>(count));
        TakeMessages();
        return true;
    }
    platform::ControlId IdOf(platform::WindowId window, const char16_t* name) const {
        platform::ControlId id = 0;
        for (const auto& control : mirror.forms().at(window).design.controls) {
            ++id;
            if (control.name == name) return id;
        }
        ADD_FAILURE() << "no such control";
        return 1;
    }
    void Introduce() {
        platform::ViewMetrics metrics;
        metrics.protocol = platform::kLinkProtocol;
        metrics.twipsPerPixelX = 15;
        metrics.twipsPerPixelY = 15;
        metrics.monitors = {{{0, 0, 1000, 800}, {0, 0, 1000, 800}}};
        Say(metrics);
    }
    void Say(const platform::FromView& message) {
        std::string frame;
        platform::AppendFrame(frame, platform::Encode(message));
        [[maybe_unused]] const auto sent = ::send(own_, frame.data(), frame.size(), MSG_NOSIGNAL);
    }
    void TakeMessages() {
        std::string_view rest = bytes_;
        std::string_view frame;
        while (platform::TakeFrame(rest, frame) == platform::FrameState::kWhole) {
            const auto message = platform::DecodeToView(frame);
            ASSERT_TRUE(message);
            Hear(*message);
        }
        bytes_.erase(0, bytes_.size() - rest.size());
    }
    void Hear(const platform::ToView& message) {
        if (const auto* change = std::get_if<platform::Change>(&message)) {
            EXPECT_TRUE(mirror.TryApply(*change));
        } else if (const auto* shown = std::get_if<platform::StatusShown>(&message)) {
            status = shown->text;
        } else if (const auto* ping = std::get_if<platform::Ping>(&message)) {
            Say(platform::Pong{ping->number});
        } else if (const auto* asked = std::get_if<platform::MessageAsked>(&message)) {
            boxes.push_back(asked->text);
            Say(platform::MessageAnswered{asked->id, platform::MessageAnswer::kOK});
        }
    }

    int core_ = -1;
    int own_ = -1;
    std::string bytes_;
    std::thread thread_;
};

}  // namespace korvane::window::test
