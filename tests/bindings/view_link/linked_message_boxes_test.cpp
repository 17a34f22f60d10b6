#include "bindings/view_link/linked_message_boxes.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/view_link/linked_windows.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using test::LinkedWindows;
namespace names = korvane::test;

const Message kQuestion{u"Really?", u"Korvane", MessageIcon::kQuestion, MessageButtons::kYesNo};
const Message kNotice{u"So it is.", u"Korvane", MessageIcon::kInformation, MessageButtons::kOK};

TEST(LinkedMessageBoxes, AQuestionIsShownAndItsAnswerComesBack) {
    for (const auto answer : {MessageAnswer::kYes, MessageAnswer::kNo}) {
        LinkedWindows all(test::LongLimits());
        auto view = all.AttachNear();
        view->Say(MessageAnswered{7, MessageAnswer::kYes});  // nobody asked
        view->Say(MessageAnswered{1, answer});
        all.boxes.owner = 4711;
        EXPECT_EQ(all.boxes.Show(kQuestion), answer);
        all.Turn(view.get());
        EXPECT_EQ(view->Heard<MessageAsked>(),
                  (std::vector<MessageAsked>{{1, u"Really?", u"Korvane", MessageIcon::kQuestion,
                                              MessageButtons::kYesNo, 4711}}));
        EXPECT_TRUE(view->Heard<MessageDropped>().empty());
    }
}

TEST(LinkedMessageBoxes, AButtonThatIsNotThereCountsAsClosed) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    view->Say(MessageAnswered{1, MessageAnswer::kOK});
    EXPECT_EQ(all.boxes.Show(kQuestion), MessageAnswer::kNo);
    view->Say(MessageAnswered{2, MessageAnswer::kYes});
    EXPECT_EQ(all.boxes.Show(kNotice), MessageAnswer::kOK);
}

TEST(LinkedMessageBoxes, ALostViewCountsAsClosed) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    view->Leave();
    EXPECT_EQ(all.boxes.Show(kQuestion), MessageAnswer::kNo);
    auto next = all.AttachNear();
    next->Leave();
    EXPECT_EQ(all.boxes.Show(kNotice), MessageAnswer::kOK);
    EXPECT_EQ(all.losses.size(), 2U);
}

TEST(LinkedMessageBoxes, AnotherViewDoesNotKnowOfTheBox) {
    LinkedWindows all(test::LongLimits());
    std::unique_ptr<test::NearView> second;
    auto first = all.AttachNear();
    all.link.onLost = [&](Loss) { second = all.AttachNear(); };
    first->Leave();
    EXPECT_EQ(all.boxes.Show(kQuestion), MessageAnswer::kNo);
    second->Read();
    EXPECT_TRUE(second->Heard<MessageDropped>().empty());
    all.ExpectSame(second->mirror);
}

TEST(LinkedMessageBoxes, WithoutAnyViewShowingRaises) {
    LinkedWindows all(test::LongLimits());
    EXPECT_THROW(all.boxes.Show(kNotice), Error);
}

TEST(LinkedMessageBoxes, TheUserReachesNoWindowMeanwhile) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    int clicks = 0;
    all.Get<Button>(names::kButton).onClick = [&clicks] { ++clicks; };
    const Event click = Clicked{all.form->Id(), all.IdOf(names::kButton)};
    view->Say(click);
    view->Say(MessageAnswered{1, MessageAnswer::kOK});
    all.boxes.Show(kNotice);
    EXPECT_EQ(clicks, 0);
    view->Say(click);
    all.Turn();
    EXPECT_EQ(clicks, 1);
}

// A box over a modal window over a box, each asked from a handler.
TEST(LinkedMessageBoxes, BoxesAndModalWindowsNest) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    auto second = all.windows.Load(names::EveryControl());
    std::vector<MessageAnswer> answers;
    all.Get<Button>(names::kButton).onClick = [&] {
        answers.push_back(all.boxes.Show(kQuestion));
        second->ShowModal();
        answers.push_back(all.boxes.Show(kQuestion));
    };
    second->onQueryClose = [&](bool) {
        answers.push_back(all.boxes.Show(kQuestion));
        return answers.back() != MessageAnswer::kYes;
    };
    view->Say(Event(Clicked{all.form->Id(), all.IdOf(names::kButton)}));
    view->Say(MessageAnswered{1, MessageAnswer::kYes});
    view->Say(Event(CloseAsked{second->Id(), true}));
    view->Say(MessageAnswered{2, MessageAnswer::kNo});
    view->Say(Event(CloseAsked{second->Id(), true}));
    view->Say(MessageAnswered{3, MessageAnswer::kYes});
    view->Say(MessageAnswered{4, MessageAnswer::kNo});
    all.Turn(view.get());
    EXPECT_EQ(answers, (std::vector<MessageAnswer>{MessageAnswer::kYes, MessageAnswer::kNo,
                                                   MessageAnswer::kYes, MessageAnswer::kNo}));
    EXPECT_FALSE(second->IsOpen());
    all.ExpectSame(view->mirror);
}

TEST(LinkedMessageBoxes, ALostViewEndsEverythingThatIsNested) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    std::vector<MessageAnswer> answers;
    all.Get<Button>(names::kButton).onClick = [&] { answers.push_back(all.boxes.Show(kQuestion)); };
    view->Say(Event(Clicked{all.form->Id(), all.IdOf(names::kButton)}));
    view->Leave();
    all.form->ShowModal();
    EXPECT_EQ(answers, std::vector<MessageAnswer>{MessageAnswer::kNo});
    EXPECT_FALSE(all.form->IsShown());
}

TEST(LinkedMessageBoxes, ABoxThatIsLeftIsTakenAway) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "a", 1), 1);
    all.pump.Watch(ends[0], POLLIN, [] { throw Error(kErrorApplication, u"no"); });
    EXPECT_THROW(all.boxes.Show(kQuestion), Error);
    all.Turn(view.get());
    EXPECT_EQ(view->Heard<MessageDropped>(), std::vector<MessageDropped>{{1}});
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(LinkedMessageBoxes, ALongTextIsCut) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    Message message = kNotice;
    message.text.assign(5'000'000, u'\xFFFF');
    view->Say(MessageAnswered{1, MessageAnswer::kOK});
    all.boxes.Show(message);
    all.Turn(view.get());
    ASSERT_EQ(view->Heard<MessageAsked>().size(), 1U);
}

}  // namespace
}  // namespace korvane::view_link
