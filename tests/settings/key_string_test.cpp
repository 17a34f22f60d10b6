#include "settings/key_string.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "platform/window/event.h"

namespace korvane {
namespace {

TEST(KeyString, IsAModifierAndOneCharacter) {
    for (const auto* s : {u"^q", u"%q", u"^%q", u"^Q", u"%1", u"^%", u"%%", u"^ ", u"^%\u00e4"}) {
        EXPECT_TRUE(bIsKeyString(s)) << ToUtf8(s);
    }
    for (const auto* s :
         {u"q", u"^", u"%", u"+q", u"qq", u"^qq", u"%%q", u"%^q", u"+%q", u"^%qq", u"qqq"}) {
        EXPECT_FALSE(bIsKeyString(s)) << ToUtf8(s);
    }
}

TEST(KeyString, IsEmptyForNoShortcut) { EXPECT_TRUE(bIsKeyString(u"")); }

TEST(KeyString, IsShownAsAnEntryAndALetter) {
    EXPECT_EQ(ControlsOfKey(u"^q"), (KeyControls{0, u"q"}));
    EXPECT_EQ(ControlsOfKey(u"%q"), (KeyControls{1, u"q"}));
    EXPECT_EQ(ControlsOfKey(u"^%q"), (KeyControls{2, u"q"}));
    EXPECT_EQ(ControlsOfKey(u"^Q"), (KeyControls{0, u"Q"}));
    EXPECT_EQ(ControlsOfKey(u""), (KeyControls{0, u""}));
}

TEST(KeyString, IsMadeFromAnEntryAndALetter) {
    EXPECT_EQ(sKeyOfControls({0, u"w"}), u"^w");
    EXPECT_EQ(sKeyOfControls({1, u"w"}), u"%w");
    EXPECT_EQ(sKeyOfControls({2, u"W"}), u"^%W");
}

TEST(KeyString, WithoutALetterIsNone) {
    for (const int index : {-1, 0, 1, 2, 3}) EXPECT_EQ(sKeyOfControls({index, u""}), u"");
}

TEST(KeyString, OfNoEntryHasNoPrefix) {
    EXPECT_EQ(sKeyOfControls({-1, u"w"}), u"w");
    EXPECT_EQ(sKeyOfControls({3, u"w"}), u"w");
}

TEST(KeyString, ComesBackFromTheDialogAsItWas) {
    for (const auto* s : {u"^q", u"%q", u"^%q", u"%Q", u""}) {
        EXPECT_EQ(sKeyOfControls(ControlsOfKey(s)), s);
    }
}

TEST(KeyString, MatchesItsKeyWithExactlyItsModifiers) {
    struct Case {
        const char16_t* s;
        int shiftState;
    };
    for (const Case& c :
         {Case{u"^q", platform::kCtrl}, Case{u"%q", platform::kAlt}, Case{u"^%q", platform::kCtrl | platform::kAlt},
          Case{u"^Q", platform::kShift | platform::kCtrl}, Case{u"%Q", platform::kShift | platform::kAlt},
          Case{u"^%Q", platform::kShift | platform::kCtrl | platform::kAlt}}) {
        for (int state = 0; state < 8; ++state) {
            EXPECT_EQ(bKeyMatches(c.s, 'Q', state), state == c.shiftState)
                << ToUtf8(c.s) << " " << state;
        }
        EXPECT_FALSE(bKeyMatches(c.s, 'W', c.shiftState));
        EXPECT_FALSE(bKeyMatches(c.s, 'q', c.shiftState)) << "a key's code is its capital's";
    }
}

TEST(KeyString, MatchesKeysThatAreNoLetters) {
    EXPECT_TRUE(bKeyMatches(u"^5", '5', platform::kCtrl));
    EXPECT_FALSE(bKeyMatches(u"^5", '5', platform::kCtrl | platform::kShift));
    EXPECT_TRUE(bKeyMatches(u"%\u00e4", 0xC4, platform::kAlt));
    EXPECT_TRUE(bKeyMatches(u"^\u00f7", 0xF7, platform::kCtrl)) << "a sign without a capital";
}

TEST(KeyString, AnEmptyOneMatchesNothing) {
    for (int state = 0; state < 8; ++state) {
        for (const int keyCode : {0, 16, int{'Q'}}) EXPECT_FALSE(bKeyMatches(u"", keyCode, state));
    }
}

}  // namespace
}  // namespace korvane
