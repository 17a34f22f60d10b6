#include "settings/global_options.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/text.h"
#include "bindings/scripted/scripted_platform.h"
#include "settings/store_names.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using Log = std::vector<std::string>;

class GlobalOptionsTest : public testing::Test {
protected:
    GlobalOptionsTest()
        : host_(test::HostWith("=1")),
          platform_(host_->sharedAccesses()),
          application_(host_->Application()),
          options_(platform_.settings, *application_) {}

    void Keep(const char16_t* key, const char16_t* text) {
        platform_.settings.texts[{kApplication, kSection, key}] = text;
    }
    // The stored text; "(none)" where there is none.
    std::u16string Kept(const char16_t* key) {
        const auto found = platform_.settings.texts.find({kApplication, kSection, key});
        return found == platform_.settings.texts.end() ? u"(none)" : found->second;
    }
    // The options with these shortcuts, bound in the host.
    void HookKeys(const char16_t* sMainKey, const char16_t* sBackKey) {
        Keep(u"optMainKey", sMainKey);
        Keep(u"optBackKey", sBackKey);
        options_.Init();
        ASSERT_TRUE(options_.bHookKeys());
    }
    std::u16string Macro(const char16_t* key) {
        const auto found = host_->keys.find(key);
        return found == host_->keys.end() ? u"(none)" : found->second;
    }

    std::unique_ptr<scripted::ScriptedHost> host_;
    scripted::ScriptedPlatform platform_;
    host::ApplicationPtr application_;
    CGlobalOptions options_;
};

TEST_F(GlobalOptionsTest, AnEmptyStoreYieldsTheDefaultsAndStaysEmpty) {
    options_.Init();
    EXPECT_EQ(options_.sMainKey(), u"^q");
    EXPECT_EQ(options_.sBackKey(), u"%q");
    EXPECT_TRUE(options_.bShowIcon());
    EXPECT_EQ(options_.enLastMode(), 1);
    EXPECT_TRUE(options_.bHighlightCells());
    EXPECT_TRUE(options_.bFormulaColour());
    EXPECT_TRUE(options_.bFormulaUnderline());
    EXPECT_FALSE(options_.bFormulaBold());
    EXPECT_FALSE(options_.bPreciseCalc());
    EXPECT_TRUE(platform_.settings.texts.empty());
    EXPECT_TRUE(platform_.settings.writes.empty());
}

TEST_F(GlobalOptionsTest, EverySettingIsReadOnceAndInOrder) {
    host_->StartLog();
    options_.Init();
    Log expected;
    for (const char* key :
         {"optMainKey", "optBackKey", "optShowIcon", "optLastMode", "optHighlightCells",
          "optFormulaColour", "optFormulaUnderline", "optFormulaBold", "optPreciseCalc"}) {
        expected.push_back(std::string("SettingsStore.Get Korvane/Korvane Explorer/") + key);
    }
    EXPECT_EQ(host_->log(), expected);
}

TEST_F(GlobalOptionsTest, StoredTextsAreTheSettings) {
    Keep(u"optMainKey", u"^%x");
    Keep(u"optBackKey", u"%y");
    Keep(u"optShowIcon", u"0");
    Keep(u"optLastMode", u"-3");
    Keep(u"optHighlightCells", u"False");
    Keep(u"optFormulaColour", u"0.0");
    Keep(u"optFormulaUnderline", u"true");
    Keep(u"optFormulaBold", u"2");
    Keep(u"optPreciseCalc", u"-1");
    options_.Init();
    EXPECT_EQ(options_.sMainKey(), u"^%x");
    EXPECT_EQ(options_.sBackKey(), u"%y");
    EXPECT_FALSE(options_.bShowIcon());
    EXPECT_EQ(options_.enLastMode(), -3);
    EXPECT_FALSE(options_.bHighlightCells());
    EXPECT_FALSE(options_.bFormulaColour());
    EXPECT_TRUE(options_.bFormulaUnderline());
    EXPECT_TRUE(options_.bFormulaBold());
    EXPECT_TRUE(options_.bPreciseCalc());
}

TEST_F(GlobalOptionsTest, AStoredKeyThatIsNoneBecomesItsDefaultAndStaysStored) {
    for (const auto* s : {u"q", u"^qq", u"+q"}) {
        Keep(u"optMainKey", s);
        Keep(u"optBackKey", s);
        options_.Init();
        EXPECT_EQ(options_.sMainKey(), u"^q") << ToUtf8(s);
        EXPECT_EQ(options_.sBackKey(), u"%q") << ToUtf8(s);
        EXPECT_EQ(Kept(u"optMainKey"), s);
    }
    EXPECT_TRUE(platform_.settings.writes.empty());
}

TEST_F(GlobalOptionsTest, AStoredEmptyKeyIsKeptAndNothingIsBound) {
    Keep(u"optMainKey", u"");
    options_.Init();
    EXPECT_EQ(options_.sMainKey(), u"");
    EXPECT_EQ(options_.sBackKey(), u"%q");
    EXPECT_FALSE(options_.bHookKeys());
    EXPECT_TRUE(host_->keys.empty());
}

TEST_F(GlobalOptionsTest, AStoredModeOf2IsKept) {
    Keep(u"optLastMode", u"2");
    options_.Init();
    EXPECT_EQ(options_.enLastMode(), 2);
}

TEST_F(GlobalOptionsTest, AStoredTextThatCannotBeConvertedRaises) {
    struct Case {
        const char16_t* key;
        const char16_t* text;
        int number;
    };
    for (const Case& c : {Case{u"optShowIcon", u"yes", kErrorTypeMismatch},
                          Case{u"optPreciseCalc", u"", kErrorTypeMismatch},
                          Case{u"optLastMode", u"one", kErrorTypeMismatch},
                          Case{u"optLastMode", u"2147483648", kErrorOverflow}}) {
        platform_.settings.texts.clear();
        Keep(c.key, c.text);
        try {
            options_.Init();
            FAIL() << ToUtf8(c.key);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), c.number);
        }
    }
}

TEST_F(GlobalOptionsTest, AStoreThatCannotBeReadYieldsTheDefaults) {
    Keep(u"optFormulaBold", u"1");
    host_->FailMember("SettingsStore.Get");
    options_.Init();
    EXPECT_FALSE(options_.bFormulaBold());
    EXPECT_EQ(options_.sMainKey(), u"^q");
}

struct Flag {
    const char16_t* key;
    bool (CGlobalOptions::*get)() const;
    void (CGlobalOptions::*put)(bool);
};
constexpr Flag kFlags[] = {
    {u"optPreciseCalc", &CGlobalOptions::bPreciseCalc, &CGlobalOptions::SetbPreciseCalc},
    {u"optHighlightCells", &CGlobalOptions::bHighlightCells, &CGlobalOptions::SetbHighlightCells},
    {u"optFormulaColour", &CGlobalOptions::bFormulaColour, &CGlobalOptions::SetbFormulaColour},
    {u"optFormulaUnderline", &CGlobalOptions::bFormulaUnderline,
     &CGlobalOptions::SetbFormulaUnderline},
    {u"optFormulaBold", &CGlobalOptions::bFormulaBold, &CGlobalOptions::SetbFormulaBold},
    {u"optShowIcon", &CGlobalOptions::bShowIcon, &CGlobalOptions::SetbShowIcon}};

TEST_F(GlobalOptionsTest, EveryFlagIsKeptAndWrittenAs1Or0) {
    options_.Init();
    for (const Flag& flag : kFlags) {
        for (const bool b : {false, true, false}) {
            (options_.*flag.put)(b);
            EXPECT_EQ((options_.*flag.get)(), b) << ToUtf8(flag.key);
            EXPECT_EQ(Kept(flag.key), b ? u"1" : u"0");
        }
        EXPECT_EQ(platform_.settings.writes.back().name.key, flag.key);
    }
    EXPECT_EQ(platform_.settings.writes.size(), std::size(kFlags) * 3);
}

TEST_F(GlobalOptionsTest, PuttingTheSameValueStillWritesIt) {
    options_.Init();
    for (const Flag& flag : kFlags) (options_.*flag.put)((options_.*flag.get)());
    options_.SetenLastMode(options_.enLastMode());
    EXPECT_EQ(platform_.settings.writes.size(), std::size(kFlags) + 1);
}

TEST_F(GlobalOptionsTest, GettingNeverTouchesTheStore) {
    options_.Init();
    const auto calls = host_->calls();
    for (const Flag& flag : kFlags) (options_.*flag.get)();
    options_.enLastMode();
    options_.sMainKey();
    options_.sBackKey();
    EXPECT_EQ(host_->calls(), calls);
}

TEST_F(GlobalOptionsTest, TheModeIsWrittenInDecimalWithoutBlanks) {
    for (const auto& [mode, text] : {std::pair{1, u"1"},
                                     {0, u"0"},
                                     {-3, u"-3"},
                                     {std::numeric_limits<int>::max(), u"2147483647"},
                                     {std::numeric_limits<int>::min(), u"-2147483648"}}) {
        options_.SetenLastMode(mode);
        EXPECT_EQ(options_.enLastMode(), mode);
        EXPECT_EQ(Kept(u"optLastMode"), text);
        options_.Init();
        EXPECT_EQ(options_.enLastMode(), mode);
    }
}

TEST_F(GlobalOptionsTest, APutThatCannotBeWrittenRaisesAndCountsUntilTheEnd) {
    options_.Init();
    host_->FailMember("SettingsStore.Save");
    EXPECT_THROW(options_.SetbFormulaBold(true), Error);
    EXPECT_TRUE(options_.bFormulaBold());
    EXPECT_THROW(options_.SetenLastMode(0), Error);
    EXPECT_EQ(options_.enLastMode(), 0);
    EXPECT_TRUE(platform_.settings.texts.empty());
}

TEST_F(GlobalOptionsTest, HookingBindsBothKeysToTheirMacros) {
    options_.Init();
    EXPECT_TRUE(options_.bHookKeys());
    EXPECT_EQ(Macro(u"^q"), u"KorvaneExplore");
    EXPECT_EQ(Macro(u"%q"), u"KorvaneExplorerGoBack");
    EXPECT_EQ(host_->keys.size(), 2U);
}

TEST_F(GlobalOptionsTest, HookingBindsNeitherKeyWhenOneIsEmpty) {
    for (const auto& [sMainKey, sBackKey] : {std::pair{u"", u"%q"}, {u"^q", u""}, {u"", u""}}) {
        Keep(u"optMainKey", sMainKey);
        Keep(u"optBackKey", sBackKey);
        options_.Init();
        const auto calls = host_->calls();
        EXPECT_FALSE(options_.bHookKeys());
        EXPECT_EQ(host_->calls(), calls);
    }
}

TEST_F(GlobalOptionsTest, AKeyThatIsRefusedDoesNotStopTheOther) {
    options_.Init();
    host_->refusedKeys = {u"^q"};
    EXPECT_FALSE(options_.bHookKeys());
    EXPECT_EQ(Macro(u"^q"), u"(none)");
    EXPECT_EQ(Macro(u"%q"), u"KorvaneExplorerGoBack");
    host_->keys.clear();
    host_->refusedKeys = {u"%q"};
    EXPECT_FALSE(options_.bHookKeys());
    EXPECT_EQ(Macro(u"^q"), u"KorvaneExplore");
    host_->refusedKeys.clear();
    EXPECT_TRUE(options_.bHookKeys());
}

TEST_F(GlobalOptionsTest, ChangingBothKeysBindsReleasesAndStores) {
    HookKeys(u"^q", u"%q");
    host_->StartLog();
    EXPECT_TRUE(options_.bChangeKeys(u"^w", u"%w"));
    EXPECT_EQ(host_->keys, (std::map<std::u16string, std::u16string>{
                               {u"^w", u"KorvaneExplore"}, {u"%w", u"KorvaneExplorerGoBack"}}));
    EXPECT_EQ(options_.sMainKey(), u"^w");
    EXPECT_EQ(options_.sBackKey(), u"%w");
    EXPECT_EQ(Kept(u"optMainKey"), u"^w");
    EXPECT_EQ(Kept(u"optBackKey"), u"%w");
    EXPECT_EQ(host_->CountOf("Application.OnKey"), 4);
    EXPECT_EQ(host_->log().at(4), "SettingsStore.Save Korvane/Korvane Explorer/optMainKey");
    EXPECT_EQ(host_->log().at(5), "SettingsStore.Save Korvane/Korvane Explorer/optBackKey");
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, ChangingTheBackKeyReleasesOnlyTheOldOne) {
    HookKeys(u"^q", u"%q");
    host_->StartLog();
    EXPECT_TRUE(options_.bChangeKeys(u"^q", u"%x"));
    EXPECT_EQ(host_->keys, (std::map<std::u16string, std::u16string>{
                               {u"^q", u"KorvaneExplore"}, {u"%x", u"KorvaneExplorerGoBack"}}));
    EXPECT_EQ(host_->CountOf("Application.OnKey"), 3) << "two are bound, one is released";
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, AnEmptyNewKeyChangesNothing) {
    HookKeys(u"^q", u"%q");
    const auto calls = host_->calls();
    EXPECT_FALSE(options_.bChangeKeys(u"", u"%w"));
    EXPECT_FALSE(options_.bChangeKeys(u"^w", u""));
    EXPECT_EQ(host_->calls(), calls);
    EXPECT_EQ(options_.sMainKey(), u"^q");
    EXPECT_EQ(options_.sBackKey(), u"%q");
}

TEST_F(GlobalOptionsTest, ARefusedMainKeyChangesNothing) {
    HookKeys(u"^q", u"%q");
    const auto before = host_->keys;
    host_->refusedKeys = {u"^w"};
    EXPECT_FALSE(options_.bChangeKeys(u"^w", u"%w"));
    EXPECT_EQ(host_->keys, before);
    EXPECT_EQ(options_.sMainKey(), u"^q");
    EXPECT_TRUE(platform_.settings.writes.empty());
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, ARefusedBackKeyReleasesTheNewMainKey) {
    HookKeys(u"^q", u"%q");
    const auto before = host_->keys;
    host_->refusedKeys = {u"%w"};
    EXPECT_FALSE(options_.bChangeKeys(u"^w", u"%w"));
    EXPECT_EQ(host_->keys, before);
    EXPECT_EQ(options_.sBackKey(), u"%q");
    EXPECT_TRUE(platform_.settings.writes.empty());
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, ARefusedBackKeyLeavesAnUnchangedMainKeyUnboundUntilTheNextHook) {
    HookKeys(u"^q", u"%q");
    host_->refusedKeys = {u"%w"};
    EXPECT_FALSE(options_.bChangeKeys(u"^q", u"%w"));
    EXPECT_EQ(Macro(u"^q"), u"(none)");
    EXPECT_EQ(Macro(u"%q"), u"KorvaneExplorerGoBack");
    EXPECT_TRUE(options_.bKeysReleased());
    EXPECT_TRUE(options_.bHookKeys());
    EXPECT_EQ(Macro(u"^q"), u"KorvaneExplore");
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, SwappingTheKeysLeavesThemUnboundUntilTheNextHook) {
    HookKeys(u"^q", u"%q");
    EXPECT_TRUE(options_.bChangeKeys(u"%q", u"^q"));
    EXPECT_EQ(Kept(u"optMainKey"), u"%q");
    EXPECT_EQ(Kept(u"optBackKey"), u"^q");
    EXPECT_TRUE(host_->keys.empty());
    EXPECT_TRUE(options_.bKeysReleased());
    host_->refusedKeys = {u"^q"};
    EXPECT_FALSE(options_.bHookKeys());
    EXPECT_TRUE(options_.bKeysReleased()) << "not bound yet";
    host_->refusedKeys.clear();
    EXPECT_TRUE(options_.bHookKeys());
    EXPECT_EQ(Macro(u"%q"), u"KorvaneExplore");
    EXPECT_EQ(Macro(u"^q"), u"KorvaneExplorerGoBack");
    EXPECT_FALSE(options_.bKeysReleased());
}

TEST_F(GlobalOptionsTest, TakingTheOtherCommandsKeyIsAReleaseOfAWantedOneToo) {
    HookKeys(u"^q", u"%q");
    EXPECT_TRUE(options_.bChangeKeys(u"%q", u"%x"));
    EXPECT_EQ(Macro(u"%q"), u"(none)") << "the old back key went last";
    EXPECT_EQ(Macro(u"%x"), u"KorvaneExplorerGoBack");
    EXPECT_TRUE(options_.bKeysReleased());
    EXPECT_TRUE(options_.bChangeKeys(u"^w", u"%x"));
    EXPECT_FALSE(options_.bKeysReleased()) << "both were bound anew";
}

TEST_F(GlobalOptionsTest, AnEmptyOldKeyIsNotReleased) {
    Keep(u"optMainKey", u"");
    options_.Init();
    host_->StartLog();
    EXPECT_TRUE(options_.bChangeKeys(u"^w", u"%q"));
    EXPECT_EQ(host_->CountOf("Application.OnKey"), 2);
    EXPECT_EQ(host_->keys.size(), 2U);
}

TEST_F(GlobalOptionsTest, AKeyThatTheHostDoesNotTakeBackIsPassedOver) {
    HookKeys(u"^q", u"%q");
    for (const int nth : {3, 4}) {
        host_->FailMember("Application.OnKey", nth);
        EXPECT_TRUE(options_.bChangeKeys(u"^w", u"%w"));
        EXPECT_EQ(Kept(u"optMainKey"), u"^w");
        host_->FailNothing();
        EXPECT_TRUE(options_.bChangeKeys(u"^q", u"%q"));
    }
}

TEST_F(GlobalOptionsTest, ChangedKeysThatCannotBeStoredRaiseAndCountUntilTheEnd) {
    HookKeys(u"^q", u"%q");
    host_->FailMember("SettingsStore.Save");
    EXPECT_THROW(options_.bChangeKeys(u"^w", u"%w"), Error);
    EXPECT_EQ(options_.sMainKey(), u"^w");
    EXPECT_EQ(Macro(u"^w"), u"KorvaneExplore");
    EXPECT_EQ(Kept(u"optMainKey"), u"^q");
}

}  // namespace
}  // namespace korvane
