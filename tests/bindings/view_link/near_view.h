// The other end of a link, within the test's own process.
#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "bindings/view_link/limits.h"
#include "bindings/view_link/metrics.h"
#include "bindings/view_link/socket.h"
#include "platform/window/codec.h"
#include "platform/window/state.h"

namespace korvane::view_link::test {

// Times that a test can wait for, and that a busy machine keeps to.
inline LinkLimits ShortLimits() {
    LinkLimits limits;
    limits.pingInterval = std::chrono::milliseconds(20);
    limits.stallTime = std::chrono::milliseconds(200);
    limits.startTime = std::chrono::milliseconds(400);
    limits.endGrace = std::chrono::milliseconds(300);
    return limits;
}

// Nobody is given up for being slow.
inline LinkLimits LongLimits() {
    LinkLimits limits;
    limits.pingInterval = std::chrono::milliseconds(50);
    limits.stallTime = std::chrono::seconds(60);
    limits.startTime = std::chrono::seconds(60);
    return limits;
}

inline platform::ViewMetrics SomeMetrics() {
    platform::ViewMetrics metrics = AssumedMetrics();
    metrics.twipsPerPixelX = 12;
    metrics.twipsPerPixelY = 10;
    metrics.frame = {60, 400, 60, 60};
    metrics.monitors = {{{0, 0, 1000, 800}, {0, 20, 1000, 800}},
                        {{1000, 0, 2000, 900}, {1000, 0, 2000, 900}}};
    metrics.windowBackground = platform::Rgb(250, 251, 252);
    return metrics;
}

class NearView {
public:
    explicit NearView(Socket link) : link_(std::move(link)) {}

    void Say(const platform::FromView& message) {
        std::string frame;
        platform::AppendFrame(frame, platform::Encode(message));
        SayBytes(frame);
    }
    // All of them; the other end must have room.
    void SayBytes(std::string_view bytes) {
        const auto sent = link_.Send(bytes);
        ASSERT_TRUE(!sent || *sent == bytes.size());
    }
    void Introduce() { Say(SomeMetrics()); }
    // Takes what has come.
    void Read() {
        Socket::Got got = Socket::Got::kSome;
        while (got == Socket::Got::kSome) got = link_.Receive(bytes_, 100'000);
        ended = got == Socket::Got::kEnd;
        std::string_view rest = bytes_;
        std::string_view frame;
        while (platform::TakeFrame(rest, frame) == platform::FrameState::kWhole) {
            const auto message = platform::DecodeToView(frame);
            ASSERT_TRUE(message);
            Hear(*message);
        }
        bytes_.erase(0, bytes_.size() - rest.size());
    }
    template <class T>
    std::vector<T> Heard() const {
        std::vector<T> found;
        for (const auto& message : heard) {
            if (const auto* one = std::get_if<T>(&message)) found.push_back(*one);
        }
        return found;
    }
    void Leave() { link_.Close(); }
    const Socket& link() const { return link_; }

    platform::WindowsMirror mirror;
    std::vector<platform::ToView> heard;
    bool answersPings = true;
    bool ended = false;
    int misfits = 0;  // changes that do not fit

private:
    void Hear(const platform::ToView& message) {
        heard.push_back(message);
        if (const auto* change = std::get_if<platform::Change>(&message)) {
            if (!mirror.TryApply(*change)) ++misfits;
        }
        const auto* ping = std::get_if<platform::Ping>(&message);
        if (ping && answersPings) Say(platform::Pong{ping->number});
    }

    Socket link_;
    std::string bytes_;
};

}  // namespace korvane::view_link::test
