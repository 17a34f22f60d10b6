#include "scenarios/stage.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace korvane::test {

platform::Form& Stage::Front() { return *world_.windows().forms().at(front_); }

template <class Act>
void Stage::Do(const std::string& what, Act act) {
    SCOPED_TRACE("when the user did: " + what);
    const auto& forms = world_.windows().forms();
    const platform::WindowId newest = forms.empty() ? 0 : forms.rbegin()->first;
    act();
    user_.Rest();
    world_.host().Rest();
    story_.push_back(what + ": " + world_.Line());
    user_.ExpectToSeeAll();
    if (forms.empty()) {
        front_ = 0;
    } else if (forms.rbegin()->first > newest) {
        front_ = forms.rbegin()->first;
    } else if (forms.count(front_) == 0) {
        platform::Form* led = world_.windows().FindForm(world_.Focused());
        front_ = led ? led->Id() : forms.rbegin()->first;
        if (!led) user_.BringToFront(Front());
    }
}

void Stage::Explore(const char16_t* cell) {
    Do("explore " + ToUtf8(cell), [&] {
        world_.Select(cell);
        world_.addin().Explore();
    });
}

void Stage::GoBack() {
    Do("go back", [&] { world_.addin().GoBack(); });
}

void Stage::Press(Key key) {
    Do("key " + std::to_string(static_cast<int>(key)), [&] { user_.Press(Front(), key); });
}

void Stage::Press(std::initializer_list<Key> keys) {
    for (const Key key : keys) Press(key);
}

void Stage::ClickRow(const char16_t* text) {
    Do("click row " + ToUtf8(text), [&] { user_.ClickRow(Front(), NodeWith(Front(), text)); });
}

void Stage::ClickArrow(const char16_t* text) {
    Do("click arrow " + ToUtf8(text), [&] { user_.ClickArrow(Front(), NodeWith(Front(), text)); });
}

void Stage::PutCaret(std::int32_t position) {
    Do("caret " + std::to_string(position), [&] { user_.PutCaret(Front(), position); });
}

void Stage::SelectText(platform::TextSpan span) {
    Do("select " + std::to_string(span.start) + "+" + std::to_string(span.length),
       [&] { user_.SelectText(Front(), span); });
}

void Stage::ClickFunctions() {
    Do("functions", [&] { user_.ClickBox(Front(), explorer_controls::kEveryFunction); });
}

void Stage::ClickPrecise() {
    Do("precise", [&] { user_.ClickBox(Front(), explorer_controls::kPrecise); });
}

void Stage::ClickClose() {
    Do("the close button", [&] { user_.ClickClose(Front()); });
}

void Stage::DragSplitter(int down) {
    Do("splitter", [&] { user_.DragSplitter(Front(), down); });
}

void Stage::Resize(int wider, int higher) {
    Do("resize", [&] { user_.Resize(Front(), wider, higher); });
}

void Stage::Close() {
    Do("close", [&] { user_.Close(Front()); });
}

void Stage::Look(std::size_t number) {
    Do("look at window " + std::to_string(number), [&] {
        front_ = world_.Window(number).Id();
        user_.BringToFront(Front());
    });
}

void Stage::Expect(const char* row, const char* marked, const char* here) {
    const std::string after = story_.empty() ? "" : "after: " + story_.back();
    EXPECT_EQ(RowOf(Front()), row) << after;
    EXPECT_EQ(MarkedIn(Front()), marked) << after;
    EXPECT_EQ(world_.Here(), std::string("[B.xls]S!") + here) << after;
}

}  // namespace korvane::test
