// The scripted host's top object.
#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"
#include "host/workbook.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ScriptedApplicationTest : public testing::Test {
protected:
    ScriptedApplicationTest() : host_(test::HostWith("=B1")), application_(host_->Application()) {}

    std::unique_ptr<ScriptedHost> host_;
    host::ApplicationPtr application_;
};

TEST_F(ScriptedApplicationTest, WritesDatesAsAShortDateAndTheTimeWhenThereIsOne) {
    struct Case {
        double serial;
        const char16_t* text;
    };
    for (const Case& c :
         {Case{0, u"12/30/1899"}, Case{1, u"12/31/1899"}, Case{2, u"1/1/1900"},
          Case{60, u"2/28/1900"}, Case{61, u"3/1/1900"}, Case{25569, u"1/1/1970"},
          Case{36585, u"2/29/2000"}, Case{46347, u"11/21/2026"},
          Case{46347.5, u"11/21/2026 12:00:00 PM"}, Case{46347.25, u"11/21/2026 6:00:00 AM"},
          Case{46347 + 13.0 / 24 + 10.0 / 1440 + 30.0 / 86400, u"11/21/2026 1:10:30 PM"},
          Case{46347 + 1.0 / 1440, u"11/21/2026 12:01:00 AM"}, Case{46347.999999, u"11/22/2026"},
          Case{-1, u"12/29/1899"}, Case{2958465, u"12/31/9999"}}) {
        EXPECT_EQ(application_->DateText(c.serial), c.text) << c.serial;
    }
}

TEST_F(ScriptedApplicationTest, KeepsWhatIsPut) {
    application_->SetStatusBar(Value(u"working"));
    EXPECT_EQ(*host_->statusBar.Text(), u"working");
    application_->SetStatusBar(Value(false));
    EXPECT_EQ(*host_->statusBar.Boolean(), false);
    application_->SetCursor(-4143);
    EXPECT_EQ(host_->cursor, -4143);
    application_->SetEnableEvents(false);
    EXPECT_FALSE(host_->enableEvents);
    application_->SetCalculation(-4135);
    EXPECT_EQ(application_->Calculation(), -4135);
    application_->SetScreenUpdating(false);
    EXPECT_FALSE(application_->ScreenUpdating());
    EXPECT_EQ(application_->Version(), u"11.0");
    EXPECT_EQ(application_->DecimalSeparator(), u".");
    EXPECT_EQ(application_->ThisWorkbook()->Name(), u"KorvaneExplorer.xla");
}

TEST_F(ScriptedApplicationTest, SelectsARangeOrAnotherObject) {
    host_->selection = Area{2, 2, 3, 3};
    const auto range = std::dynamic_pointer_cast<host::Range>(application_->Selection());
    ASSERT_TRUE(range);
    EXPECT_EQ(range->Address(host::kRelative), u"B2:C3");
    host_->selectedObject = u"ChartArea";
    EXPECT_EQ(application_->Selection()->TypeName(), u"ChartArea");
    host_->nothingOpen = true;
    EXPECT_EQ(application_->Selection(), nullptr);
    EXPECT_THROW(application_->ActiveCell(), Error);
}

TEST_F(ScriptedApplicationTest, BindsKeysAndGivesThemBack) {
    host_->refusedKeys.insert(u"^%q");
    application_->OnKey(u"^%e", u"Explore");
    EXPECT_EQ(host_->keys.at(u"^%e"), u"Explore");
    EXPECT_THROW(application_->OnKey(u"^%q", u"Explore"), Error);
    application_->OnKey(u"^%e");
    EXPECT_TRUE(host_->keys.empty());
}

TEST_F(ScriptedApplicationTest, GivesTheKeysBackWhenItIsLetGo) {
    application_->OnKey(u"^%e", u"Explore");
    auto other = host_->Application();
    application_.reset();
    EXPECT_EQ(host_->keys.size(), 1U) << "it is still held";
    other.reset();
    EXPECT_TRUE(host_->keys.empty());
}

TEST_F(ScriptedApplicationTest, HasTheWindowThatItIsGiven) {
    EXPECT_EQ(application_->Hwnd(), 1);
    host_->hwnd = 0;
    EXPECT_EQ(application_->Hwnd(), 0);
}

TEST_F(ScriptedApplicationTest, ThisWorkbookIsTheAddinsOwn) {
    host_->thisWorkbookName = u"Other.xla";
    host_->thisWorkbookPath = u"C:\\Add-ins";
    EXPECT_EQ(application_->ThisWorkbook()->Name(), u"Other.xla");
    EXPECT_EQ(application_->ThisWorkbook()->Path(), u"C:\\Add-ins");
    host_->FailMember("Application.ThisWorkbook");
    EXPECT_THROW(application_->ThisWorkbook(), Error);
}

TEST_F(ScriptedApplicationTest, TellsItsSinksOfActivatedWindowsUntilTheyLetGo) {
    class Sink : public host::ApplicationEvents {
    public:
        void WindowActivate(const host::WorkbookPtr& workbook) override {
            names.push_back(workbook->Name());
        }
        std::vector<std::u16string> names;
    };
    Sink sink;
    auto subscription = application_->Connect(sink);
    host_->RaiseWindowActivate();
    EXPECT_EQ(sink.names, (std::vector<std::u16string>{u"B.xls"}));
    host_->enableEvents = false;
    host_->RaiseWindowActivate();
    EXPECT_EQ(sink.names.size(), 1U) << "events are off";
    host_->enableEvents = true;
    const int handles = host_->LiveHandles();
    subscription.reset();
    EXPECT_EQ(host_->LiveHandles(), handles - 1) << "a subscription is a handle";
    host_->RaiseWindowActivate();
    EXPECT_EQ(sink.names.size(), 1U);
}

TEST_F(ScriptedApplicationTest, ASubscriptionTakesThePlaceOfAnotherOfTheSameSink) {
    class Sink : public host::ApplicationEvents {
    public:
        void WindowActivate(const host::WorkbookPtr& /*workbook*/) override { ++raised; }
        int raised = 0;
    };
    Sink sink;
    auto subscription = application_->Connect(sink);
    subscription = application_->Connect(sink);
    host_->RaiseWindowActivate();
    EXPECT_EQ(sink.raised, 1);
    const auto second = application_->Connect(sink);
    host_->RaiseWindowActivate();
    EXPECT_EQ(sink.raised, 3) << "once for each subscription";
}

TEST_F(ScriptedApplicationTest, ASinkThatWasLetGoMeanwhileHearsNothing) {
    class Sink : public host::ApplicationEvents {
    public:
        void WindowActivate(const host::WorkbookPtr& /*workbook*/) override {
            ++raised;
            other->subscription.reset();
        }
        Sink* other = nullptr;
        host::SubscriptionPtr subscription;
        int raised = 0;
    };
    Sink one;
    Sink two;
    one.other = &two;
    two.other = &one;
    one.subscription = application_->Connect(one);
    two.subscription = application_->Connect(two);
    host_->RaiseWindowActivate();
    EXPECT_EQ(one.raised + two.raised, 1);
}

}  // namespace
}  // namespace korvane::scripted
