#include "bindings/view_link/pump.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include "bindings/view_link/linked_windows.h"
#include "platform/window/codec.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using test::LinkedWindows;
namespace names = korvane::test;

TEST(Pump, DoneIsAskedFirstAndAfterEveryEvent) {
    LinkedWindows all(test::LongLimits());
    all.pump.Run([] { return true; });  // needs no view
    auto view = all.AttachNear();
    int clicks = 0;
    all.Get<Button>(names::kButton).onClick = [&clicks] { ++clicks; };
    for (int k = 0; k < 5; ++k) {
        view->Say(Event(Clicked{all.form->Id(), all.IdOf(names::kButton)}));
    }
    all.pump.Run([&clicks] { return clicks == 2; });
    EXPECT_EQ(clicks, 2);
    all.pump.RunUntil([&clicks] { return clicks == 4; });
    EXPECT_EQ(clicks, 4);
}

TEST(Pump, AModalWindowEndsWhenTheUserClosesIt) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    view->Say(Event(CloseAsked{all.form->Id(), true}));
    all.form->ShowModal();
    EXPECT_FALSE(all.form->IsOpen());
}

TEST(Pump, AModalWindowEndsWhenTheViewIsLost) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    view->Leave();
    all.form->ShowModal();
    EXPECT_FALSE(all.form->IsShown());
    EXPECT_TRUE(all.form->IsOpen());
    EXPECT_EQ(all.losses, std::vector<Loss>{Loss::kEnded});
}

TEST(Pump, AStalledViewDoesNotKeepAModalWindowOpen) {
    LinkedWindows all(test::ShortLimits());
    auto view = all.AttachNear();
    const auto begin = Clock::now();
    all.form->ShowModal();
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(180));
    EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(1500));
    EXPECT_EQ(all.losses, std::vector<Loss>{Loss::kStalled});
}

TEST(Pump, EndsWithTheLastThingToWaitFor) {
    LinkedWindows all(test::LongLimits());
    all.pump.RunUntil([] { return false; });  // nothing is there to wait for
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    int calls = 0;
    all.pump.Watch(ends[0], POLLIN, [&] {
        char byte = 0;
        ASSERT_EQ(::read(ends[0], &byte, 1), 1);
        if (++calls == 3) all.pump.Unwatch(ends[0]);
    });
    ASSERT_EQ(::write(ends[1], "abcd", 4), 4);
    all.pump.RunUntil([] { return false; });
    EXPECT_EQ(calls, 3);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(Pump, AFloodOfEitherKindLetsTheOtherBeHeard) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    int clicks = 0;
    int calls = 0;
    all.Get<Button>(names::kButton).onClick = [&clicks] { ++clicks; };
    const FromView click = Event(Clicked{all.form->Id(), all.IdOf(names::kButton)});
    std::string bytes;
    for (int k = 0; k < 1000; ++k) AppendFrame(bytes, Encode(click));
    view->SayBytes(bytes);
    const int zeros = ::open("/dev/zero", O_RDONLY | O_CLOEXEC);
    all.pump.Watch(zeros, POLLIN, [&calls] { ++calls; });
    all.pump.RunUntil([&] { return clicks == 1000 || calls == 2000; });
    EXPECT_EQ(clicks, 1000);
    EXPECT_NEAR(calls, 1000, 10);
    ::close(zeros);
}

TEST(Pump, AWatchMayOpenAModalWindow) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    int calls = 0;
    all.pump.Watch(ends[0], POLLIN, [&] {
        char byte = 0;
        ASSERT_EQ(::read(ends[0], &byte, 1), 1);
        if (++calls == 2) view->Say(Event(CloseAsked{all.form->Id(), true}));
        if (calls == 1) all.form->ShowModal();
    });
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);
    all.pump.RunUntil([&all] { return !all.form->IsOpen(); });
    EXPECT_EQ(calls, 2);
    ::close(ends[0]);
    ::close(ends[1]);
}

}  // namespace
}  // namespace korvane::view_link
