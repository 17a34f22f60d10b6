// A watched host is the host itself, to all who use it.
#include "support/watched_host.h"

#include <gtest/gtest.h>

#include "apps/addin/addin.h"
#include "base/error.h"
#include "bindings/scripted/scripted_platform.h"
#include "support/exploring.h"

namespace korvane::test {
namespace {

class WatchedHostTest : public ::testing::Test {
protected:
    WatchedHostTest() : host_(HostWith("=IF(B1>1,SUM(B1,C1),Rate)", R"("B1":2,"C1":3)")) {
        host_->thisWorkbookName = u"KorvaneExplorer.xla";
        host_->thisWorkbookPath = u"C:\\Add-ins";
        host_->StartLog();
        accesses_->StartLog();
    }

    std::unique_ptr<scripted::ScriptedHost> host_;
    std::shared_ptr<scripted::Accesses> accesses_ = std::make_shared<scripted::Accesses>();
    WatchedHost watched_{accesses_};
};

TEST_F(WatchedHostTest, ItsCallsAreThoseThatReachTheHost) {
    scripted::ScriptedPlatform platform;
    platform.screen.windows[1] = {host_->caption, {0, 0, 800, 600}};
    platform.clock.now = {2026, 11, 16, 12, 0, 0};
    Addin addin(platform.Services());
    addin.main().AutoOpen(watched_.Watch(host_->Application()),
                          watched_.Watch(host_->AddinWorkbook()));
    addin.main().Explore();
    ASSERT_EQ(platform.windows.forms().size(), 1U);
    platform.windows.Deliver(platform::NodeSelected{1, 2, 2});
    host_->RaiseWindowActivate();
    addin.main().GoBack();
    EXPECT_EQ(watched_.LiveHandles(), host_->LiveHandles());
    addin.main().ShutDown();
    EXPECT_EQ(watched_.LiveHandles(), 0);
    EXPECT_EQ(host_->LiveHandles(), 0);
    EXPECT_GT(host_->log().size(), 100U);
    EXPECT_EQ(accesses_->log(), host_->log());
}

TEST_F(WatchedHostTest, ACallThatFailsDoesNotReachTheHost) {
    const auto application = watched_.Watch(host_->Application());
    const auto cell = application->ActiveCell();
    EXPECT_EQ(cell->TypeName(), u"Range");
    accesses_->FailMember("Range.SetFormula");
    EXPECT_THROW(cell->SetFormula(u"=1"), Error);
    EXPECT_EQ(host_->CountOf("Range.SetFormula"), 0);
    accesses_->FailNothing();
    cell->SetFormula(u"=1");
    EXPECT_EQ(host_->CountOf("Range.SetFormula"), 1);
}

}  // namespace
}  // namespace korvane::test
