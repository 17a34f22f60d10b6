#include "bindings/view_link/remote_view.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <thread>

#include "bindings/view_link/near_view.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using std::chrono::milliseconds;
using test::NearView;

// A remote view and what it calls.
struct Ends {
    explicit Ends(const LinkLimits& limits = test::LongLimits())
        : Ends(limits, ConnectedSockets()) {}
    Ends(const LinkLimits& limits, std::pair<Socket, Socket> sockets)
        : view(std::move(sockets.first), limits), far(std::move(sockets.second)) {
        view.onMetrics = [this](const ViewMetrics& metrics) { told.push_back(metrics); };
        view.onEvent = [this](const Event& event, const View* origin) {
            events.push_back(event);
            origins.push_back(origin);
        };
        view.onAnswer = [this](const MessageAnswered& answer) { answers.push_back(answer); };
        view.onLost = [this](Loss loss) { losses.push_back(loss); };
    }
    void Introduce() {
        far.Introduce();
        Handle();
    }
    bool IsReady() const {
        pollfd link{view.fd(), POLLIN, 0};
        return view.NextTimeout() == Clock::duration::zero() || ::poll(&link, 1, 0) > 0;
    }
    void Handle() {
        do {
            view.OnReady();
        } while (IsReady());
    }
    void HandleFor(milliseconds time) {
        const auto end = Clock::now() + time;
        while (Clock::now() < end && losses.empty()) {
            Handle();
            std::this_thread::sleep_for(milliseconds(2));
        }
    }

    RemoteView view;
    NearView far;
    std::vector<ViewMetrics> told;
    std::vector<Event> events;
    std::vector<const View*> origins;
    std::vector<MessageAnswered> answers;
    std::vector<Loss> losses;
};

TEST(RemoteView, ChangesGoOutInOrder) {
    Ends ends;
    ends.Introduce();
    for (int k = 0; k < 20'000; ++k) ends.view.Apply(WindowFocused{k});
    for (int k = 0; k < 100 && ends.far.Heard<Change>().size() < 20'000; ++k) {
        ends.Handle();
        ends.far.Read();
    }
    const auto heard = ends.far.Heard<Change>();
    ASSERT_EQ(heard.size(), 20'000U);
    for (int k = 0; k < 20'000; ++k) {
        ASSERT_EQ(heard[static_cast<std::size_t>(k)], Change(WindowFocused{k}));
    }
}

TEST(RemoteView, ALoopIsToldOnceThatThereIsSomethingToSend) {
    Ends ends;
    ends.Introduce();
    int told = 0;
    ends.view.onQueued = [&told] { ++told; };
    EXPECT_EQ(ends.view.events(), POLLIN);
    ends.view.Apply(WindowFocused{1});
    ends.view.Apply(WindowFocused{2});
    EXPECT_EQ(told, 1);
    EXPECT_EQ(ends.view.events(), POLLIN | POLLOUT);
    ends.view.Flush();
    EXPECT_EQ(ends.view.events(), POLLIN);
    ends.view.Apply(WindowFocused{3});
    EXPECT_EQ(told, 2);
}

TEST(RemoteView, OneMessageIsHandledPerCall) {
    Ends ends;
    ends.Introduce();
    ends.far.Say(Event(Clicked{1, 1}));
    ends.far.Say(Event(Clicked{1, 2}));
    ends.far.Say(MessageAnswered{3, MessageAnswer::kYes});
    ends.view.OnReady();
    EXPECT_EQ(ends.events.size(), 1U);
    EXPECT_EQ(ends.view.NextTimeout(), Clock::duration::zero());
    ends.Handle();
    EXPECT_EQ(ends.events, (std::vector<Event>{Clicked{1, 1}, Clicked{1, 2}}));
    EXPECT_EQ(ends.answers, (std::vector<MessageAnswered>{{3, MessageAnswer::kYes}}));
    EXPECT_GT(ends.view.NextTimeout(), Clock::duration::zero());
}

TEST(RemoteView, AViewIntroducesItselfFirst) {
    const FromView tooEarly[] = {Event(Clicked{1, 1}), Pong{1}, MessageAnswered{1, {}}};
    for (const FromView& message : tooEarly) {
        Ends ends;
        ends.far.Say(message);
        ends.Handle();
        EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kGarbage});
        EXPECT_TRUE(ends.events.empty());
    }
}

TEST(RemoteView, AnotherProtocolIsNotSpoken) {
    Ends ends;
    auto metrics = test::SomeMetrics();
    metrics.protocol = kLinkProtocol + 1;
    ends.far.Say(metrics);
    ends.Handle();
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kProtocol});
    EXPECT_TRUE(ends.told.empty());
}

TEST(RemoteView, EqualMetricsAreToldOnce) {
    Ends ends;
    ends.Introduce();
    ends.Introduce();
    EXPECT_EQ(ends.told.size(), 1U);
    auto metrics = test::SomeMetrics();
    metrics.monitors.pop_back();
    ends.far.Say(metrics);
    ends.Handle();
    EXPECT_EQ(ends.told.size(), 2U);
    metrics.twipsPerPixelX = -1;
    ends.far.Say(metrics);
    ends.Handle();
    EXPECT_EQ(ends.told.size(), 2U);
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kGarbage});
}

TEST(RemoteView, WhatALostViewSentBeforeIsStillHeard) {
    Ends ends;
    ends.Introduce();
    ends.far.Say(Event(Clicked{1, 1}));
    ends.far.Say(Event(Clicked{1, 2}));
    ends.far.Leave();
    ends.view.Apply(WindowFocused{1});
    ends.Handle();
    EXPECT_EQ(ends.events.size(), 2U);
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kEnded});
    EXPECT_FALSE(ends.view.alive());
    EXPECT_LT(ends.view.fd(), 0);
    // Nothing comes of it any more.
    ends.view.Apply(WindowFocused{2});
    ends.view.Flush();
    ends.view.OnReady();
    EXPECT_EQ(ends.losses.size(), 1U);
    EXPECT_EQ(ends.view.NextTimeout(), Clock::duration::max());
}

TEST(RemoteView, AViewThatLeavesAMessageUnfinishedIsLost) {
    Ends ends;
    ends.Introduce();
    ends.far.SayBytes(std::string("\x40\0\0\0half", 8));
    ends.Handle();
    EXPECT_TRUE(ends.view.alive());
    ends.far.Leave();
    ends.Handle();
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kEnded});
}

TEST(RemoteView, AViewThatNoLongerListensIsLost) {
    Ends ends;
    ends.Introduce();
    ::shutdown(ends.far.link().number(), SHUT_RD);
    ends.view.Apply(WindowFocused{1});
    ends.Handle();
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kEnded});
}

TEST(RemoteView, AViewThatAnswersStaysHoweverLittleItDoes) {
    Ends ends(test::ShortLimits());
    ends.Introduce();
    const auto end = Clock::now() + milliseconds(600);
    while (Clock::now() < end) {
        ends.Handle();
        ends.far.Read();
        std::this_thread::sleep_for(milliseconds(1));
    }
    EXPECT_TRUE(ends.view.alive());
    EXPECT_GE(ends.far.Heard<Ping>().size(), 5U);
}

TEST(RemoteView, AViewThatDoesNotAnswerIsGivenUp) {
    Ends ends(test::ShortLimits());
    ends.Introduce();
    const auto begin = Clock::now();
    ends.HandleFor(milliseconds(5000));
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kStalled});
    EXPECT_GE(Clock::now() - begin, milliseconds(200));
}

TEST(RemoteView, AViewThatNeverIntroducesItselfIsGivenUp) {
    Ends ends(test::ShortLimits());
    const auto begin = Clock::now();
    ends.HandleFor(milliseconds(5000));
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kStalled});
    EXPECT_GE(Clock::now() - begin, milliseconds(400));
}

TEST(RemoteView, AViewForWhichTooMuchWaitsIsGivenUp) {
    LinkLimits limits = test::LongLimits();
    limits.queueBytes = std::size_t{2} << 20;
    Ends ends(limits);
    ends.Introduce();
    const StatusShown status{std::u16string(10'000, u'x')};
    const auto begin = Clock::now();
    for (int k = 0; k < 400 && ends.view.alive(); ++k) ends.view.Send(status);
    EXPECT_FALSE(ends.view.alive());
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
    // Not told where the change was made, but from the loop.
    EXPECT_TRUE(ends.losses.empty());
    EXPECT_EQ(ends.view.NextTimeout(), Clock::duration::zero());
    ends.Handle();
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kOverfull});
}

TEST(RemoteView, AnEventThatMayHaveCrossedAChangeIsToldBack) {
    Ends ends;
    ends.Introduce();
    ends.view.Apply(PropertySet{1, 3, Property::kChecked, true});
    ends.far.Say(Event(Toggled{1, 3, false}));
    ends.far.Say(Event(Toggled{1, 4, false}));
    ends.Handle();
    ends.far.Read();  // and answers the ping behind the change
    ends.Handle();
    ends.far.Say(Event(Toggled{1, 3, true}));
    ends.Handle();
    const View* own = &ends.view;
    EXPECT_EQ(ends.origins, (std::vector<const View*>{nullptr, own, own}));
}

TEST(RemoteView, AHandlerMayRaise) {
    Ends ends;
    ends.Introduce();
    int events = 0;
    ends.view.onEvent = [&events](const Event&, const View*) {
        if (++events == 1) throw std::runtime_error("no");
    };
    ends.far.Say(Event(Clicked{1, 1}));
    ends.far.Say(Event(Clicked{1, 2}));
    EXPECT_THROW(ends.Handle(), std::runtime_error);
    ends.Handle();
    EXPECT_EQ(events, 2);
}

TEST(RemoteView, AHandlerMayWaitForTheNextEvents) {
    Ends ends;
    ends.Introduce();
    std::vector<int> seen;
    ends.view.onEvent = [&](const Event& event, const View*) {
        const int control = std::get<Clicked>(event).control;
        seen.push_back(control);
        if (control == 1) ends.Handle();
        seen.push_back(-control);
    };
    for (int k = 1; k <= 3; ++k) ends.far.Say(Event(Clicked{1, k}));
    ends.far.Leave();
    ends.Handle();
    EXPECT_EQ(seen, (std::vector<int>{1, 2, -2, 3, -3, -1}));
    EXPECT_EQ(ends.losses, std::vector<Loss>{Loss::kEnded});
}

}  // namespace
}  // namespace korvane::view_link
