#include "platform/window/checked_replay.h"

#include <gtest/gtest.h>

#include "platform/window/recording.h"
#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

// A window whose button writes a number into its text box; `first` is where it
// begins.
struct Session {
    Session(ModalLoop& loop, View& view, int first) : windows(loop), view_(view), number(first) {
        windows.Attach(view_);
        form = windows.Load(test::EveryControl());
        form->Get<Button>(test::kButton).onClick = [this] {
            form->SetCaption(std::u16string(1, static_cast<char16_t>(u'0' + number++)));
        };
        form->Show();
    }
    ~Session() {
        windows.Detach(view_);
        form.reset();
    }

    Windows windows;
    View& view_;
    int number;
    std::unique_ptr<Form> form;
};

std::vector<RecordedFrame> Record() {
    test::NoModalLoop loop;
    Recorder recorder;
    Session session(loop, recorder, 0);
    recorder.Note('x', "note");
    for (int k = 0; k < 3; ++k) session.windows.Deliver(Clicked{1, 4});
    return ReadRecording(recorder.recording()).value();
}

std::optional<std::string> Replayed(const std::vector<RecordedFrame>& frames, int first,
                                    int* notes = nullptr) {
    CheckedReplay replay(frames);
    replay.onNote = [&](const RecordedFrame& note) {
        if (notes && note.kind == 'x') ++*notes;
    };
    std::optional<Session> session;
    session.emplace(replay, static_cast<View&>(replay), first);
    replay.PlayTo(session->windows);
    replay.PlayAll();
    return replay.difference();
}

TEST(CheckedReplay, TheSameIsTheSame) {
    int notes = 0;
    EXPECT_EQ(Replayed(Record(), 0, &notes), std::nullopt);
    EXPECT_EQ(notes, 1);
}

TEST(CheckedReplay, TellsTheFirstDifference) {
    const auto difference = Replayed(Record(), 5);
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->find("after event 1 ("), 0U) << *difference;
    EXPECT_NE(difference->find("= \"0\"\n"), std::string::npos) << *difference;
    EXPECT_NE(difference->find("= \"5\""), std::string::npos) << *difference;
}

TEST(CheckedReplay, WhatDoesNotComeIsADifferenceToo) {
    auto frames = Record();
    frames.push_back(frames.back());
    const auto difference = Replayed(frames, 0);
    ASSERT_TRUE(difference);
    EXPECT_NE(difference->find("now: nothing"), std::string::npos) << *difference;
    EXPECT_EQ(difference->find("after event 3 ("), 0U) << *difference;
}

TEST(CheckedReplay, ABrokenRecordingIsNone) {
    Recorder recorder;
    recorder.Note('e', "\xFF");
    EXPECT_EQ(ReadRecording(recorder.recording()), std::nullopt);
    EXPECT_EQ(ReadRecording("abc"), std::nullopt);
}

}  // namespace
}  // namespace korvane::platform
