#include "bindings/scripted/scripted_platform.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

TEST(ScriptedPlatform, CountsTheCallsOfAllServicesInOneOrder) {
    ScriptedPlatform platform;
    platform.urls.texts[u"http://a"] = u"text";
    platform.accesses().StartLog();
    platform.clock.Now();
    platform.files.StateFolder();
    platform.messageBoxes.Show({});
    platform.modal.Run([] { return true; });
    platform.resources.Picture(u"IMGEXPLORE");
    platform.screen.Width();
    platform.settings.Get(u"a", u"b", u"c", u"");
    platform.shell.Start(u"x");
    platform.urls.Read(u"http://a", std::chrono::seconds(1));
    EXPECT_EQ(platform.accesses().log(),
              (std::vector<std::string>{"Clock.Now", "Files.StateFolder", "MessageBoxes.Show",
                                        "Modal.Run", "Resources.Picture IMGEXPLORE", "Screen.Width",
                                        "SettingsStore.Get a/b/c", "Shell.Start x",
                                        "UrlReader.Read http://a"}));
}

TEST(ScriptedPlatform, SharesItsAccessesWithAHost) {
    const auto host = test::HostWith("=B1");
    ScriptedPlatform platform(host->sharedAccesses());
    host->StartLog();
    host->FailNthCall(3);
    host->Application()->Version();
    platform.shell.Start(u"x");
    EXPECT_THROW(host->Application()->Caption(), Error);
    EXPECT_EQ(platform.accesses().lastFailure(), "Application.Caption");
    EXPECT_EQ(host->log(), (std::vector<std::string>{"Application.Version", "Shell.Start x",
                                                     "Application.Caption"}));
    EXPECT_EQ(platform.accesses().calls(), 3);
}

TEST(ScriptedPlatform, HasAccessesOfItsOwnOtherwise) {
    ScriptedPlatform one;
    ScriptedPlatform other;
    one.shell.Start(u"x");
    EXPECT_EQ(one.accesses().calls(), 1);
    EXPECT_EQ(other.accesses().calls(), 0);
}

}  // namespace
}  // namespace korvane::scripted
