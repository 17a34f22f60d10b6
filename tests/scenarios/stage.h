// A scenario's hands and eyes: a user before a world, and all that happened.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "scenarios/user.h"
#include "scenarios/world.h"

namespace korvane::test {

// The user acts on the window in front: the one that opened last; after it closed
// the one that was given the focus, or the newest that is left.
class Stage {
public:
    // Both outlive it.
    Stage(World& world, User& user) : world_(world), user_(user) {}

    World& world() { return world_; }
    platform::Form& Front();

    // ---- in the host ----
    void Explore(const char16_t* cell);
    void GoBack();
    // ---- in the window in front ----
    void Press(Key key);
    void Press(std::initializer_list<Key> keys);
    void ClickRow(const char16_t* text);
    void ClickArrow(const char16_t* text);
    void PutCaret(std::int32_t position);
    void SelectText(platform::TextSpan span);
    void ClickFunctions();
    void ClickPrecise();
    void ClickClose();
    void DragSplitter(int down);
    void Resize(int wider, int higher);
    void Close();
    // The window with this place among the open ones comes to the front.
    void Look(std::size_t number);

    // What the window in front shows: the selected row, the marked text, and the
    // host's active cell.
    void Expect(const char* row, const char* marked, const char* here);

    // What was done, and what was there behind it.
    const std::vector<std::string>& story() const { return story_; }

private:
    template <class Act>
    void Do(const std::string& what, Act act);

    World& world_;
    User& user_;
    platform::WindowId front_ = 0;
    std::vector<std::string> story_;
};

}  // namespace korvane::test
