#include "bindings/posix/ini_text.h"

#include <gtest/gtest.h>

#include <map>

#include "bindings/posix/random_text.h"

namespace korvane::posix {
namespace {

std::string AfterSet(const std::string& bytes, std::u16string_view section, std::u16string_view key,
                     std::u16string_view text) {
    IniText ini(bytes);
    EXPECT_TRUE(ini.Set(section, key, text));
    EXPECT_EQ(ini.Find(section, key), text);
    EXPECT_FALSE(ini.Set(section, key, text));
    return ini.bytes();
}

TEST(IniText, FindsTextsBySectionAndKey) {
    const IniText ini("[A]\nkey=1\n\n[B]\nkey=2\nempty=\n");
    EXPECT_EQ(ini.Find(u"A", u"key"), u"1");
    EXPECT_EQ(ini.Find(u"B", u"key"), u"2");
    EXPECT_EQ(ini.Find(u"B", u"empty"), u"");
    EXPECT_EQ(ini.Find(u"A", u"empty"), std::nullopt);
    EXPECT_EQ(ini.Find(u"C", u"key"), std::nullopt);
    EXPECT_EQ(ini.Find(u"a", u"key"), std::nullopt);
    EXPECT_EQ(ini.Find(u"A", u"Key"), std::nullopt);
}

TEST(IniText, ReadsWhatAPersonWrote) {
    const IniText ini(
        "\xEF\xBB\xBF[ A ] ; mine\r\n  key\t=  a = b  \r\n;key=2\n#key=3\n\n[B]\n[A]\nlast=4");
    EXPECT_EQ(ini.Find(u"A", u"key"), u"a = b");
    EXPECT_EQ(ini.Find(u"A", u"last"), u"4");
    EXPECT_EQ(ini.Find(u"A", u";key"), std::nullopt);
}

TEST(IniText, SkipsLinesThatAreBroken) {
    const IniText ini("lost=0\n[A]\nno text\nkey=1\n[A\nkey2=2\nb\n[\n]\n[]\nnone=5\n");
    EXPECT_EQ(ini.Find(u"A", u"key"), u"1");
    EXPECT_EQ(ini.Find(u"A", u"key2"), std::nullopt);
    EXPECT_EQ(ini.Find(u"", u"lost"), std::nullopt);
    EXPECT_EQ(ini.Find(u"", u"none"), u"5");
}

TEST(IniText, TakesTheFirstOfTwo) {
    IniText ini("[A]\nkey=1\nkey=2\n");
    EXPECT_EQ(ini.Find(u"A", u"key"), u"1");
    ini.Set(u"A", u"key", u"3");
    EXPECT_EQ(ini.bytes(), "[A]\nkey=3\nkey=2\n");
}

TEST(IniText, AddsSectionsAndKeys) {
    EXPECT_EQ(AfterSet("", u"A", u"key", u"1"), "[A]\nkey=1\n");
    EXPECT_EQ(AfterSet("[A]\nkey=1\n", u"A", u"two", u"2"), "[A]\nkey=1\ntwo=2\n");
    EXPECT_EQ(AfterSet("[A]\n", u"A", u"two", u"2"), "[A]\ntwo=2\n");
    EXPECT_EQ(AfterSet("[A]\nkey=1\n", u"B", u"two", u"2"), "[A]\nkey=1\n\n[B]\ntwo=2\n");
    EXPECT_EQ(AfterSet("[A]\nkey=1\n\n[B]\nb=2\n", u"A", u"a", u"3"),
              "[A]\nkey=1\na=3\n\n[B]\nb=2\n");
}

TEST(IniText, CompletesALastLineWithoutItsEnd) {
    EXPECT_EQ(AfterSet("[A]\nkey=1", u"A", u"two", u"2"), "[A]\nkey=1\ntwo=2\n");
    EXPECT_EQ(AfterSet("[A", u"A", u"two", u"2"), "[A\n\n[A]\ntwo=2\n");
    EXPECT_EQ(AfterSet("[A]\nkey=", u"A", u"key", u"2"), "[A]\nkey=2");
}

TEST(IniText, KeepsAllThatItDoesNotUnderstand) {
    const std::string rest = "; mine\r\n\xFF\xFE junk\n[Other]\n unknown = 1 ; why\n[broken\nx=\n";
    EXPECT_EQ(AfterSet(rest + "[A]\n  key =  1 \r\n;end\n\n" + rest, u"A", u"key", u"2"),
              rest + "[A]\n  key =  2 \r\n;end\n\n" + rest);
    EXPECT_EQ(AfterSet(rest, u"A", u"key", u"2"), rest + "\n[A]\nkey=2\n");
    const std::string zeros(512, '\0');
    EXPECT_EQ(AfterSet(zeros, u"A", u"key", u"2"), zeros + "\n\n[A]\nkey=2\n");
}

TEST(IniText, HoldsEveryTextUnderEveryName) {
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        IniText ini("; a comment\n[x]\ny=z");
        std::map<std::pair<std::u16string, std::u16string>, std::u16string> expected;
        for (int k = 0; k < 30; ++k) {
            const auto section = RandomText(random, 2);
            const auto key = RandomText(random, 3);
            const auto text = RandomText(random, 20);
            expected[{section, key}] = text;
            ini.Set(section, key, text);
        }
        const IniText again(ini.bytes());
        for (const auto& [names, text] : expected) {
            ASSERT_EQ(again.Find(names.first, names.second), text) << ini.bytes();
        }
    }
}

TEST(IniText, TakesAnyBytes) {
    std::mt19937 random(13);
    const std::string bytesOfMeaning = "[]=;#\\\n\r\t au\xC3\xA9\xFF";
    for (int k = 0; k < 3'000; ++k) {
        std::string bytes;
        for (auto count = random() % 40; count > 0; --count) {
            bytes += random() % 4 == 0 ? static_cast<char>(random() % 256)
                                       : bytesOfMeaning[random() % bytesOfMeaning.size()];
        }
        IniText ini(bytes);
        ini.Set(u"a", u"u", u"text");
        ASSERT_EQ(ini.Find(u"a", u"u"), u"text") << bytes;
    }
}

}  // namespace
}  // namespace korvane::posix
