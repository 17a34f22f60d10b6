#include "formula/element_options.h"

#include <gtest/gtest.h>

#include "host/constants.h"
#include "host/name.h"
#include "support/exploring.h"

namespace korvane {
namespace {

class NoReporter : public ErrorReporter {
public:
    void Report(const char16_t*, const char16_t*, const Error&, bool) override {}
};

class ElementOptionsTest : public testing::Test {
protected:
    ElementOptionsTest()
        : host_(test::HostWith("=1", "", R"("calculation":2,"screenUpdating":true)")),
          application_(host_->Application()),
          options_(*application_, reporter_) {
        options_.rngRootCell = application_->ActiveCell();
        host_->StartLog();
    }
    scripted::Model& model() { return host_->model(); }

    NoReporter reporter_;
    std::unique_ptr<scripted::ScriptedHost> host_;
    host::ApplicationPtr application_;
    CElementOptions options_;
};

TEST_F(ElementOptionsTest, BeginsWithEverySwitchAndFlagOff) {
    EXPECT_FALSE(options_.bEveryFunction);
    EXPECT_FALSE(options_.bPreciseCalc);
    EXPECT_FALSE(options_.bMaybeImprecise);
    EXPECT_FALSE(options_.bContainsIndirect);
}

TEST_F(ElementOptionsTest, SavingSetsManualCalculationWithoutRepainting) {
    options_.SaveCalc();
    EXPECT_EQ(model().calculation, host::xlCalculationManual);
    EXPECT_EQ(model().calculation, -4135);
    EXPECT_FALSE(model().screenUpdating);
    options_.RestoreCalc();
    EXPECT_EQ(model().calculation, 2);
    EXPECT_TRUE(model().screenUpdating);
}

TEST_F(ElementOptionsTest, OfSeveralSavesTheFirstStateCounts) {
    options_.SaveCalc();
    const auto calls = host_->calls();
    options_.SaveCalc();
    EXPECT_EQ(host_->calls(), calls) << "a second save must not touch the host";
    options_.RestoreCalc();
    EXPECT_EQ(model().calculation, 2);
}

TEST_F(ElementOptionsTest, RestoringWithoutASavedStateDoesNothing) {
    options_.RestoreCalc();
    EXPECT_EQ(host_->log().size(), 0U);
    options_.SaveCalc();
    options_.RestoreCalc();
    model().calculation = 7;
    options_.RestoreCalc();
    EXPECT_EQ(model().calculation, 7);
}

TEST_F(ElementOptionsTest, ClearingForgetsASavedStateWithoutTouchingTheHost) {
    options_.SaveCalc();
    const auto calls = host_->calls();
    options_.ClearCalc();
    options_.RestoreCalc();
    EXPECT_EQ(host_->calls(), calls);
    EXPECT_EQ(model().calculation, host::xlCalculationManual);
}

TEST_F(ElementOptionsTest, AStateWhoseChangeFailedCanStillBePutBack) {
    host_->FailMember("Application.SetScreenUpdating");
    EXPECT_THROW(options_.SaveCalc(), Error);
    EXPECT_EQ(model().calculation, host::xlCalculationManual);
    host_->FailNothing();
    options_.RestoreCalc();
    EXPECT_EQ(model().calculation, 2);
    EXPECT_TRUE(model().screenUpdating);
}

TEST_F(ElementOptionsTest, ARestoreThatFailedCanBeTriedAgain) {
    options_.SaveCalc();
    host_->FailMember("Application.SetScreenUpdating");
    EXPECT_THROW(options_.RestoreCalc(), Error);
    host_->FailNothing();
    options_.RestoreCalc();
    EXPECT_TRUE(model().screenUpdating);
}

TEST_F(ElementOptionsTest, AsksForTheRootsWorkbookAndNamesOncePerExploration) {
    EXPECT_EQ(options_.RootWorkbookName(), u"B.xls");
    EXPECT_EQ(options_.RootWorkbookName(), u"B.xls");
    EXPECT_EQ(host_->CountOf("Workbook.Name"), 1);
    options_.SheetNames();
    options_.SheetNames();
    EXPECT_EQ(host_->CountOf("Worksheet.Names"), 1);
    options_.WorkbookNames();
    options_.WorkbookNames();
    EXPECT_EQ(host_->CountOf("Workbook.Names"), 1);
    options_.ForgetRoot();
    options_.RootWorkbookName();
    options_.SheetNames();
    options_.WorkbookNames();
    EXPECT_EQ(host_->CountOf("Workbook.Name"), 2);
    EXPECT_EQ(host_->CountOf("Worksheet.Names"), 2);
    EXPECT_EQ(host_->CountOf("Workbook.Names"), 2);
}

TEST_F(ElementOptionsTest, MoreThan200000ElementsAreAFailure) {
    for (int k = 0; k < 200'000; ++k) options_.CountElement();
    try {
        options_.CountElement();
        FAIL() << "the element beyond the limit was let through";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), kErrorOutOfStack);
    }
    options_.ForgetRoot();
    EXPECT_NO_THROW(options_.CountElement());
}

}  // namespace
}  // namespace korvane
