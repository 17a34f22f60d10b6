#include "bindings/scripted/scripted_message_boxes.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

using platform::Message;
using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

class ScriptedMessageBoxesTest : public testing::Test {
protected:
    const Message notice_{u"Done.", u"Title", MessageIcon::kInformation, MessageButtons::kOK};
    const Message question_{u"Sure?", u"Title", MessageIcon::kQuestion, MessageButtons::kYesNo};
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedMessageBoxes boxes_{accesses_};
};

TEST_F(ScriptedMessageBoxesTest, KeepsWhatWasShown) {
    boxes_.Show(notice_);
    boxes_.Show(question_);
    ASSERT_EQ(boxes_.shown.size(), 2U);
    EXPECT_EQ(boxes_.shown[0].text, u"Done.");
    EXPECT_EQ(boxes_.shown[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(boxes_.shown[1].title, u"Title");
    EXPECT_EQ(boxes_.shown[1].buttons, MessageButtons::kYesNo);
}

TEST_F(ScriptedMessageBoxesTest, IsDismissedWhenTheScriptSaysNothing) {
    EXPECT_EQ(boxes_.Show(notice_), MessageAnswer::kOK);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kNo);
}

TEST_F(ScriptedMessageBoxesTest, GivesTheAnswersInOrder) {
    boxes_.answers = {MessageAnswer::kYes, MessageAnswer::kNo, MessageAnswer::kYes};
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kYes);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kNo);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kYes);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kNo) << "none is left";
}

TEST_F(ScriptedMessageBoxesTest, AnAnswerWaitsForABoxThatHasAButtonForIt) {
    boxes_.answers = {MessageAnswer::kYes, MessageAnswer::kOK};
    EXPECT_EQ(boxes_.Show(notice_), MessageAnswer::kOK);
    EXPECT_EQ(boxes_.answers.size(), 2U);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kYes);
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kNo) << "OK is no answer to a question";
    EXPECT_EQ(boxes_.Show(notice_), MessageAnswer::kOK);
    EXPECT_TRUE(boxes_.answers.empty());
}

TEST_F(ScriptedMessageBoxesTest, OtherThingsHappenWhileABoxIsOpen) {
    int runs = 0;
    boxes_.whileShown = [&](const Message& message) {
        ++runs;
        EXPECT_EQ(message.text, u"Sure?");
        EXPECT_EQ(boxes_.open, 1);
        EXPECT_EQ(boxes_.shown.size(), 1U) << "the box is there already";
        EXPECT_EQ(boxes_.Show(notice_), MessageAnswer::kOK) << "a second box above it";
        boxes_.answers.push_back(MessageAnswer::kYes);
        boxes_.whileShown = nullptr;
    };
    EXPECT_EQ(boxes_.Show(question_), MessageAnswer::kYes) << "answered behind all that";
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(boxes_.open, 0);
    EXPECT_EQ(boxes_.shown.size(), 2U);
}

TEST_F(ScriptedMessageBoxesTest, IsClosedWhateverHappensMeanwhile) {
    boxes_.whileShown = [](const Message&) { throw Error(kErrorApplication, u"lost"); };
    EXPECT_THROW(boxes_.Show(notice_), Error);
    EXPECT_EQ(boxes_.open, 0);
}

TEST_F(ScriptedMessageBoxesTest, IsNotedAndFails) {
    accesses_->StartLog();
    boxes_.Show(notice_);
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"MessageBoxes.Show Done."}));
    accesses_->FailMember("MessageBoxes.Show");
    EXPECT_THROW(boxes_.Show(notice_), Error);
    EXPECT_EQ(boxes_.shown.size(), 1U) << "a box that fails is not seen";
}

}  // namespace
}  // namespace korvane::scripted
