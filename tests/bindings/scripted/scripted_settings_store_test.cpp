#include "bindings/scripted/scripted_settings_store.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

class ScriptedSettingsStoreTest : public testing::Test {
protected:
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedSettingsStore store_{accesses_};
};

TEST_F(ScriptedSettingsStoreTest, KeepsTextsByApplicationSectionAndKey) {
    store_.Save(u"App", u"One", u"Key", u" text\r\n");
    store_.Save(u"App", u"Two", u"Key", u"");
    EXPECT_EQ(store_.Get(u"App", u"One", u"Key", u"default"), u" text\r\n");
    EXPECT_EQ(store_.Get(u"App", u"Two", u"Key", u"default"), u"") << "stored, though empty";
    EXPECT_EQ(store_.Get(u"App", u"One", u"key", u"default"), u"default");
    EXPECT_EQ(store_.Get(u"App", u"one", u"Key", u"default"), u"default");
    EXPECT_EQ(store_.Get(u"Other", u"One", u"Key", u"default"), u"default");
    store_.texts[{u"Other", u"One", u"Key"}] = u"put by a test";
    EXPECT_EQ(store_.Get(u"Other", u"One", u"Key", u"default"), u"put by a test");
}

TEST_F(ScriptedSettingsStoreTest, RemembersEveryWrite) {
    store_.Save(u"App", u"One", u"Key", u"1");
    store_.Save(u"App", u"One", u"Key", u"2");
    ASSERT_EQ(store_.writes.size(), 2U);
    EXPECT_EQ(store_.writes[0].text, u"1");
    EXPECT_EQ(store_.writes[1].text, u"2");
    EXPECT_EQ(store_.writes[1].name, (SettingName{u"App", u"One", u"Key"}));
    EXPECT_EQ(store_.texts.size(), 1U);
}

TEST_F(ScriptedSettingsStoreTest, AWriteThatFailsChangesNothing) {
    store_.Save(u"App", u"One", u"Key", u"1");
    accesses_->FailMember("SettingsStore.Save");
    EXPECT_THROW(store_.Save(u"App", u"One", u"Key", u"2"), Error);
    EXPECT_EQ(store_.Get(u"App", u"One", u"Key", u""), u"1");
    EXPECT_EQ(store_.writes.size(), 1U);
}

TEST_F(ScriptedSettingsStoreTest, AStoreThatCannotBeReadHoldsNothing) {
    store_.Save(u"App", u"One", u"Key", u"1");
    accesses_->FailMember("SettingsStore.Get");
    EXPECT_EQ(store_.Get(u"App", u"One", u"Key", u"default"), u"default");
    EXPECT_EQ(accesses_->lastFailure(), "SettingsStore.Get");
}

TEST_F(ScriptedSettingsStoreTest, IsNoted) {
    accesses_->StartLog();
    store_.Save(u"App", u"One", u"Key", u"1");
    store_.Get(u"App", u"Two", u"Key", u"");
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"SettingsStore.Save App/One/Key",
                                                          "SettingsStore.Get App/Two/Key"}));
}

}  // namespace
}  // namespace korvane::scripted
