#include "settings/key_string.h"

#include <array>
#include <cstddef>

#include "base/text.h"
#include "platform/window/event.h"

namespace korvane {
namespace {

constexpr std::array<std::u16string_view, 3> kPrefixes = {u"^", u"%", u"^%"};

bool IsCapital(char16_t ch) { return ch >= u'A' && ch <= u'Z'; }

// Capitals as keyboards have them: A–Z, and the accented letters of Latin-1.
char16_t Capital(char16_t ch) {
    const bool isSmall = (ch >= u'a' && ch <= u'z') || (ch >= 0xE0 && ch <= 0xFE && ch != 0xF7);
    return isSmall ? static_cast<char16_t>(ch - 0x20) : ch;
}

int ExpectedShiftState(std::u16string_view s) {
    int state = 0;
    if (IsCapital(s.back())) state |= platform::kShift;
    if (StartsWith(s, u"^")) state |= platform::kCtrl;
    if ((s.size() == 3 && StartsWith(s, u"^%")) || StartsWith(s, u"%")) state |= platform::kAlt;
    return state;
}

}  // namespace

bool bIsKeyString(std::u16string_view s) {
    switch (s.size()) {
        case 0: return true;
        case 2: return StartsWith(s, u"%") || StartsWith(s, u"^");
        case 3: return StartsWith(s, u"^%");
        default: return false;
    }
}

KeyControls ControlsOfKey(std::u16string_view s) {
    KeyControls controls;
    if (s.size() == 3) {
        controls.index = 2;
    } else {
        controls.index = StartsWith(s, u"%") ? 1 : 0;
    }
    if (!s.empty()) controls.text = s.back();
    return controls;
}

std::u16string sKeyOfControls(const KeyControls& controls) {
    if (controls.text.empty()) return {};
    const bool isEntry =
        controls.index >= 0 && static_cast<std::size_t>(controls.index) < kPrefixes.size();
    std::u16string s(isEntry ? kPrefixes[static_cast<std::size_t>(controls.index)] : u"");
    return s + controls.text;
}

bool bKeyMatches(std::u16string_view s, int keyCode, int shiftState) {
    return !s.empty() && shiftState == ExpectedShiftState(s) && keyCode == Capital(s.back());
}

}  // namespace korvane
