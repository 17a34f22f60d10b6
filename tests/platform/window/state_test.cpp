#include "platform/window/state.h"

#include <gtest/gtest.h>

#include "platform/window/random_messages.h"
#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

ControlState RichText(const std::u16string& text) {
    ControlState state((ControlDesign()));
    state.Set(Property::kText, text);
    return state;
}

TEST(ControlState, HoldsTheDesignAtFirst) {
    ControlDesign design;
    design.caption = u"&Bold";
    design.place = {1, 2, 3, 4};
    const ControlState state(design);
    EXPECT_EQ(state.Get<std::u16string>(Property::kCaption), u"&Bold");
    EXPECT_EQ(state.Get<Place>(Property::kPlace), (Place{1, 2, 3, 4}));
    EXPECT_TRUE(state.Get<bool>(Property::kVisible));
    EXPECT_TRUE(state.Get<bool>(Property::kEnabled));
    EXPECT_EQ(state.Get<std::int32_t>(Property::kListIndex), -1);
}

TEST(ControlState, RefusesValuesOfAnotherType) {
    ControlState state((ControlDesign()));
    EXPECT_FALSE(state.Set(Property::kCaption, true));
    EXPECT_FALSE(state.Set(Property::kCount_, true));
}

TEST(ControlState, ASelectionLiesWithinTheText) {
    ControlState state = RichText(u"=A1");
    EXPECT_TRUE(state.Set(Property::kSelection, TextSpan{1, 2}));
    for (const TextSpan& outside : {TextSpan{2, 2}, TextSpan{-1, 1}, TextSpan{0, -1},
                                    TextSpan{4, 0}, TextSpan{2'000'000'000, 2'000'000'000}}) {
        EXPECT_FALSE(state.Set(Property::kSelection, outside));
    }
    EXPECT_EQ(state.Get<TextSpan>(Property::kSelection), (TextSpan{1, 2}));
}

TEST(ControlState, ANewTextIsPlainWithTheCaretAtItsStart) {
    ControlState state = RichText(u"=A1");
    state.Set(Property::kSelection, TextSpan{1, 2});
    state.Format({1, 2}, {true, false, 5});
    state.Set(Property::kText, std::u16string(u"=B1"));
    EXPECT_EQ(state.Get<TextSpan>(Property::kSelection), TextSpan());
    EXPECT_EQ(state.runs(), std::vector<TextRun>{TextRun()});
}

TEST(ControlState, RunsAreSplitAndJoined) {
    const TextLook bold{true, false, 0};
    ControlState state = RichText(u"=A1+B1");
    ASSERT_TRUE(state.Format({1, 2}, bold));
    EXPECT_EQ(state.runs(), (std::vector<TextRun>{{0, {}}, {1, bold}, {3, {}}}));
    ASSERT_TRUE(state.Format({3, 1}, bold));
    EXPECT_EQ(state.runs(), (std::vector<TextRun>{{0, {}}, {1, bold}, {4, {}}}));
    ASSERT_TRUE(state.Format({0, 6}, {}));
    EXPECT_EQ(state.runs(), std::vector<TextRun>{TextRun()});
    EXPECT_FALSE(state.Format({5, 2}, bold));
}

// Against a state of one look per character.
TEST(ControlState, RunsSayWhatEachCharacterLooksLike) {
    test::RandomMessages random(7);
    constexpr std::int32_t kSize = 30;
    ControlState state = RichText(std::u16string(kSize, u'x'));
    std::vector<TextLook> looks(kSize);
    for (int round = 0; round < 3000; ++round) {
        const std::int32_t start = random.Below(kSize + 1);
        const TextSpan span{start, random.Below(kSize - start + 1)};
        const TextLook look{random.Below(2) == 1, false, random.Below(2)};
        ASSERT_TRUE(state.Format(span, look));
        std::fill_n(looks.begin() + span.start, span.length, look);
        std::vector<TextLook> spelled;
        for (std::size_t k = 0; k < state.runs().size(); ++k) {
            const auto& runs = state.runs();
            const std::int32_t end = k + 1 < runs.size() ? runs[k + 1].start : kSize;
            ASSERT_LT(runs[k].start, end);
            ASSERT_TRUE(k == 0 || runs[k].look != runs[k - 1].look);
            spelled.insert(spelled.end(), static_cast<std::size_t>(end - runs[k].start),
                           runs[k].look);
        }
        ASSERT_EQ(spelled, looks);
    }
}

TEST(ControlState, RowsHangBelowEarlierOnes) {
    ControlState state((ControlDesign()));
    EXPECT_FALSE(state.AddNode({u"a", 1, u"", {}, false}));
    EXPECT_TRUE(state.AddNode({u"a", 0, u"", {}, false}));
    EXPECT_TRUE(state.AddNode({u"b", 1, u"", {}, false}));
    EXPECT_FALSE(state.AddNode({u"c", -1, u"", {}, false}));
    EXPECT_FALSE(state.Expand(0, true));
    EXPECT_FALSE(state.Expand(3, true));
    EXPECT_TRUE(state.Expand(2, true));
    EXPECT_TRUE(state.Set(Property::kSelectedNode, 2));
    EXPECT_FALSE(state.Set(Property::kSelectedNode, 3));
    state.ClearNodes();
    EXPECT_EQ(state.Get<std::int32_t>(Property::kSelectedNode), 0);
}

TEST(FormState, AFrameLiesAroundTheClientArea) {
    const FormState form(FormOpened{1, test::EveryControl(), {60, 400, 60, 60}});
    EXPECT_EQ(form.self.Get<Place>(Property::kPlace), (Place{100, 200, 6120, 4460}));
    EXPECT_EQ(form.Find(12), nullptr);
    EXPECT_EQ(form.Find(-1), nullptr);
    EXPECT_EQ(form.Find(kFormItself), &form.self);
}

TEST(WindowsMirror, TakesAnyChangesWithoutHarm) {
    test::RandomMessages random(11);
    WindowsMirror mirror;
    int taken = 0;
    for (int k = 0; k < 50'000; ++k) taken += mirror.TryApply(random.NextChange()) ? 1 : 0;
    EXPECT_GT(taken, 1000);
}

}  // namespace
}  // namespace korvane::platform
