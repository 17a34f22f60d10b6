// Keyboard shortcuts as texts, in the host's syntax: "^" Ctrl, "%" Alt, "^%"
// both, then one letter; the empty text is no shortcut.
#pragma once

#include <string>
#include <string_view>

namespace korvane {

// Whether `s` has the form of a key string, the empty one included. The letter
// may be any character.
bool bIsKeyString(std::u16string_view s);

// What the settings dialog shows for a key string.
struct KeyControls {
    int index = 0;        // entry of the combo box: 0 Ctrl, 1 Alt, 2 both
    std::u16string text;  // the letter; empty for no shortcut
    friend bool operator==(const KeyControls&, const KeyControls&) = default;
};
KeyControls ControlsOfKey(std::u16string_view s);

// The key string that the dialog shows: empty without a letter; an index that is
// no entry of the combo box adds no prefix.
std::u16string sKeyOfControls(const KeyControls& controls);

// Whether a key event is the shortcut `s`: the letter's key with exactly the
// keys held that `s` names, and Shift for a capital letter; `shiftState` adds up
// the bits of platform/window/event.h. `keyCode` is the
// capital letter's character. The empty string matches nothing.
bool bKeyMatches(std::u16string_view s, int keyCode, int shiftState);

}  // namespace korvane
