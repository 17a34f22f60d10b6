// Who sits before the windows in a scenario: what he does, not how it is brought
// about.
#pragma once

#include "platform/window/form.h"

namespace korvane::test {

enum class Key {
    kUp,
    kDown,
    kLeft,
    kRight,
    kHome,
    kEnd,
    kExpandAll,  // the asterisk
    kSpace,
    kTab,
    kEnter,
    kEscape,
    kExplore,  // the shortcut of the first day, Ctrl+Q
};

// Every member acts on an open window, which is in front: the user has looked at
// it last, or was led there. Lengths are pixels of the desktop.
class User {
public:
    virtual ~User() = default;

    // A key for the control that has the focus.
    virtual void Press(platform::Form& window, Key key) = 0;
    // The row must be visible: all above it are expanded.
    virtual void ClickRow(platform::Form& window, std::int32_t node) = 0;
    // The arrow before a visible row that has others below it: opens or folds it.
    virtual void ClickArrow(platform::Form& window, std::int32_t node) = 0;
    // A click into the formula text, before the character at the position.
    virtual void PutCaret(platform::Form& window, std::int32_t position) = 0;
    // Drags over characters of the formula text.
    virtual void SelectText(platform::Form& window, platform::TextSpan span) = 0;
    virtual void ClickBox(platform::Form& window, const char16_t* box) = 0;
    virtual void ClickClose(platform::Form& window) = 0;
    // Downwards; back up when it is negative. Let go where it came to rest.
    virtual void DragSplitter(platform::Form& window, int down) = 0;
    virtual void Resize(platform::Form& window, int wider, int higher) = 0;
    // By the close box of its frame.
    virtual void Close(platform::Form& window) = 0;
    // Looks at a window that is not in front.
    virtual void BringToFront(platform::Form& window) = 0;

    // Lets everything happen that is due: new windows come up, and the focus goes
    // where it was given.
    virtual void Rest() = 0;
    // Fails the test unless he sees what the windows hold.
    virtual void ExpectToSeeAll() = 0;
};

}  // namespace korvane::test
