#include "platform/window/codec.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/window/random_messages.h"

namespace korvane::platform {
namespace {

constexpr int kRounds = 20'000;

TEST(Codec, EveryChangeAndEventComesBackAsItWas) {
    test::RandomMessages random(1);
    std::vector<bool> changes(std::variant_size_v<Change>);
    std::vector<bool> events(std::variant_size_v<Event>);
    for (int k = 0; k < kRounds; ++k) {
        const Change change = random.NextChange();
        changes[change.index()] = true;
        ASSERT_EQ(DecodeChange(Encode(change)), change);
        const Event event = random.NextEvent();
        events[event.index()] = true;
        ASSERT_EQ(DecodeEvent(Encode(event)), event);
    }
    EXPECT_EQ(std::count(changes.begin(), changes.end(), false), 0) << "a kind never came";
    EXPECT_EQ(std::count(events.begin(), events.end(), false), 0) << "a kind never came";
}

TEST(Codec, EveryMessageOfALinkComesBackAsItWas) {
    test::RandomMessages random(4);
    std::vector<bool> toView(std::variant_size_v<ToView>);
    std::vector<bool> fromView(std::variant_size_v<FromView>);
    for (int k = 0; k < kRounds; ++k) {
        const ToView there = random.NextToView();
        toView[there.index()] = true;
        ASSERT_EQ(DecodeToView(Encode(there)), there);
        const FromView back = random.NextFromView();
        fromView[back.index()] = true;
        ASSERT_EQ(DecodeFromView(Encode(back)), back);
    }
    EXPECT_EQ(std::count(toView.begin(), toView.end(), false), 0) << "a kind never came";
    EXPECT_EQ(std::count(fromView.begin(), fromView.end(), false), 0) << "a kind never came";
}

TEST(Codec, MessagesAreSmall) {
    EXPECT_EQ(Encode(Event(NodeSelected{1, 2, 3})).size(), 4U);
    EXPECT_EQ(Encode(Change(PropertySet{1, 2, Property::kChecked, true})).size(), 6U);
    // A text takes a byte per Latin letter.
    EXPECT_EQ(Encode(Event(TextEdited{1, 2, u"=SUM(A1)"})).size(), 3U + 1U + 8U);
}

TEST(Codec, TextsAreKeptUnitByUnit) {
    const std::u16string text{u'\0', 0xD800, u'\xFFFF', 0xDC00, u'\x7F', u'\x80'};
    const Event event = TextEdited{1, 1, text};
    EXPECT_EQ(DecodeEvent(Encode(event)), event);
}

TEST(Codec, TheLargestNumbersFit) {
    for (const std::int64_t number :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        const Change change = WindowFocused{number};
        EXPECT_EQ(DecodeChange(Encode(change)), change);
    }
}

TEST(Codec, EveryCutAndEveryLongerMessageIsRefused) {
    test::RandomMessages random(2);
    for (int k = 0; k < 2000; ++k) {
        const std::string bytes = Encode(random.NextEvent());
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            ASSERT_FALSE(DecodeEvent(std::string_view(bytes).substr(0, cut)));
        }
        ASSERT_FALSE(DecodeEvent(bytes + '\0'));
    }
}

TEST(Codec, EveryCutAndEveryLongerMessageOfALinkIsRefused) {
    test::RandomMessages random(5);
    for (int k = 0; k < 2000; ++k) {
        const std::string there = Encode(random.NextToView());
        const std::string back = Encode(random.NextFromView());
        for (std::size_t cut = 0; cut < there.size(); ++cut) {
            ASSERT_FALSE(DecodeToView(std::string_view(there).substr(0, cut)));
        }
        for (std::size_t cut = 0; cut < back.size(); ++cut) {
            ASSERT_FALSE(DecodeFromView(std::string_view(back).substr(0, cut)));
        }
        ASSERT_FALSE(DecodeToView(there + '\0'));
        ASSERT_FALSE(DecodeFromView(back + '\0'));
    }
}

TEST(Codec, LinkMessagesFromGarbageAreWrittenAsTheSameBytes) {
    test::RandomMessages random(6);
    int read = 0;
    for (int k = 0; k < kRounds * 5; ++k) {
        std::string bytes = Encode(random.NextFromView());
        for (int damage = random.Below(3); damage >= 0 && !bytes.empty(); --damage) {
            bytes[static_cast<std::size_t>(random.Below(static_cast<std::int32_t>(bytes.size())))] =
                static_cast<char>(random.Below(256));
        }
        if (const auto message = DecodeFromView(bytes)) {
            ++read;
            ASSERT_EQ(Encode(*message), bytes);
        }
        if (const auto message = DecodeToView(bytes)) {
            ASSERT_EQ(Encode(*message), bytes);
        }
    }
    EXPECT_GT(read, 100);
}

TEST(Codec, WhatIsReadFromGarbageIsWrittenAsTheSameBytes) {
    test::RandomMessages random(3);
    int read = 0;
    for (int k = 0; k < kRounds * 10; ++k) {
        std::string bytes = Encode(random.NextChange());
        for (int damage = random.Below(3); damage >= 0 && !bytes.empty(); --damage) {
            bytes[static_cast<std::size_t>(random.Below(static_cast<std::int32_t>(bytes.size())))] =
                static_cast<char>(random.Below(256));
        }
        const auto change = DecodeChange(bytes);
        if (!change) continue;
        ++read;
        ASSERT_EQ(Encode(*change), bytes);
    }
    EXPECT_GT(read, 100);
}

TEST(Codec, ValuesThatNoMessageHoldsAreRefused) {
    const std::string good = Encode(Event(Mouse{1, 1, MouseAction::kUp, 1, 0, 2, 3}));
    std::string unknownAction = good;
    unknownAction[3] = 3;
    EXPECT_FALSE(DecodeEvent(unknownAction));
    const float bad[] = {std::numeric_limits<float>::quiet_NaN(),
                         std::numeric_limits<float>::infinity()};
    for (const float number : bad) {
        EXPECT_FALSE(DecodeEvent(Encode(Event(Mouse{1, 1, MouseAction::kUp, 1, 0, number, 0}))));
    }
    // A property's value of another type.
    EXPECT_FALSE(DecodeChange(Encode(Change(PropertySet{1, 1, Property::kChecked, Place{}}))));
    EXPECT_FALSE(
        DecodeToView(Encode(ToView(Change(PropertySet{1, 1, Property::kChecked, Place{}})))));
    EXPECT_FALSE(DecodeFromView(Encode(FromView(MessageAnswered{1, MessageAnswer::kCount_}))));
    // A list that claims more than there is.
    EXPECT_FALSE(DecodeEvent(std::string("\x09\x02\x02\xFF\xFF\xFF\xFF\x0F", 8)));
}

TEST(Frames, MessagesComeBackInOrder) {
    std::string stream;
    AppendFrame(stream, "first");
    AppendFrame(stream, "");
    AppendFrame(stream, "third");
    std::string_view rest = stream;
    std::string_view message;
    for (const char* expected : {"first", "", "third"}) {
        ASSERT_EQ(TakeFrame(rest, message), FrameState::kWhole);
        EXPECT_EQ(message, expected);
    }
    EXPECT_EQ(TakeFrame(rest, message), FrameState::kUnfinished);
}

TEST(Frames, AMessageInPartsIsWaitedForAndATooLongOneIsBroken) {
    std::string stream;
    AppendFrame(stream, "message");
    std::string_view message;
    for (std::size_t cut = 0; cut < stream.size(); ++cut) {
        std::string_view part = std::string_view(stream).substr(0, cut);
        EXPECT_EQ(TakeFrame(part, message), FrameState::kUnfinished);
        EXPECT_EQ(part.size(), cut);
    }
    std::string_view tooLong("\xFF\xFF\xFF\x7F....", 8);
    EXPECT_EQ(TakeFrame(tooLong, message), FrameState::kBroken);
}

}  // namespace
}  // namespace korvane::platform
