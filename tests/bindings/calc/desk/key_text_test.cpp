#include "bindings/calc/desk/key_text.h"

#include <gtest/gtest.h>

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

namespace korvane::calc {
namespace {

namespace Key = com::sun::star::awt::Key;
namespace KeyModifier = com::sun::star::awt::KeyModifier;

void Expect(const char16_t* text, int code, int modifiers) {
    const auto key = KeyOf(text);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->KeyCode, code);
    EXPECT_EQ(key->Modifiers, modifiers);
}

TEST(KeyText, LettersAndDigitsWithCtrlOrAlt) {
    Expect(u"^q", Key::Q, KeyModifier::MOD1);
    Expect(u"%q", Key::Q, KeyModifier::MOD2);
    Expect(u"^%a", Key::A, KeyModifier::MOD1 | KeyModifier::MOD2);
    Expect(u"^+z", Key::Z, KeyModifier::MOD1 | KeyModifier::SHIFT);
    Expect(u"+%0", Key::NUM0, KeyModifier::MOD2 | KeyModifier::SHIFT);
    Expect(u"^9", Key::NUM9, KeyModifier::MOD1);
}

TEST(KeyText, ACapitalMeansShift) {
    Expect(u"^Q", Key::Q, KeyModifier::MOD1 | KeyModifier::SHIFT);
    Expect(u"^+Q", Key::Q, KeyModifier::MOD1 | KeyModifier::SHIFT);
}

TEST(KeyText, OtherTextsAreNoKeys) {
    for (const char16_t* text : {u"", u"^", u"%", u"^%", u"q", u"+q", u"Q", u"^^q", u"^qq", u"qq",
                                 u"^,", u"^ ", u"^é", u"^ю", u"^{F1}", u"~q", u"^~"}) {
        EXPECT_FALSE(KeyOf(text)) << std::u16string(text).size();
    }
}

}  // namespace
}  // namespace korvane::calc
