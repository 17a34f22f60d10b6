#include "apps/window/settings_overrides.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/scripted/scripted_platform.h"
#include "settings/store_names.h"

namespace korvane::window {
namespace {

TEST(SettingsOverrides, StandInUntilTheKeyIsSaved) {
    scripted::ScriptedPlatform platform;
    auto& store = platform.settings;
    SettingsOverrides overrides(store);
    store.Save(kApplication, kSection, u"a", u"stored");
    overrides.Override(u"a", u"other");
    EXPECT_EQ(overrides.Get(kApplication, kSection, u"a", u""), u"other");
    EXPECT_EQ(overrides.Get(kApplication, kSection, u"b", u"none"), u"none");
    EXPECT_EQ(overrides.Get(kApplication, u"Elsewhere", u"a", u"none"), u"none");
    EXPECT_EQ(store.Get(kApplication, kSection, u"a", u""), u"stored");
    overrides.Save(kApplication, u"Elsewhere", u"a", u"x");
    EXPECT_EQ(overrides.Get(kApplication, kSection, u"a", u""), u"other");
    overrides.Save(kApplication, kSection, u"a", u"new");
    EXPECT_EQ(overrides.Get(kApplication, kSection, u"a", u""), u"new");
    EXPECT_EQ(store.Get(kApplication, kSection, u"a", u""), u"new");
}

TEST(SettingsOverrides, WhatCannotBeSavedStaysOverridden) {
    scripted::ScriptedPlatform platform;
    SettingsOverrides overrides(platform.settings);
    overrides.Override(u"a", u"other");
    platform.accesses().FailMember("SettingsStore.Save");
    EXPECT_THROW(overrides.Save(kApplication, kSection, u"a", u"new"), korvane::Error);
    platform.accesses().FailNothing();
    EXPECT_EQ(overrides.Get(kApplication, kSection, u"a", u""), u"other");
}

}  // namespace
}  // namespace korvane::window
