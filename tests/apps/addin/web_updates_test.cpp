// The update check over a real connection.
#include <gtest/gtest.h>
#include <stdlib.h>

#include "apps/addin/addin.h"
#include "base/text.h"
#include "bindings/curl/curl_url_reader.h"
#include "bindings/curl/web_server.h"
#include "bindings/scripted/scripted_platform.h"
#include "host/addin/update_check.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

const char* const kOffer =
    "A new version of Korvane Explorer (2.2) is available for download.\n"
    "Would you like to visit the website to download it?";
const char* const kUpToDate = "Your version of Korvane Explorer (2.1) is up to date.";
const char* const kNoConnection = "Cannot connect to the web server.";
const char* const kNoVersion =
    "Error while retrieving the version information from the web server.";

class WebUpdatesTest : public testing::Test {
protected:
    void SetUp() override {
        const std::string why = test::WhyNoWebServer();
        if (!why.empty()) GTEST_SKIP() << "no web server to test with: " << why;
        ::setenv("no_proxy", "127.0.0.1", 1);
        platform_.clock.now = {2026, 11, 16, 12, 0, 0};
        addin_.main().AutoOpen(host_->Application(), host_->AddinWorkbook());
    }
    void TearDown() override {
        addin_.main().ShutDown();
        EXPECT_EQ(host_->LiveHandles(), 0);
    }
    // What a check with this server shows.
    Texts Check(const std::u16string& server, bool manual,
                platform::MessageAnswer answer = platform::MessageAnswer::kNo) {
        services_.links.updateServer = server;
        platform_.messageBoxes.shown.clear();
        platform_.messageBoxes.answers = {answer};
        EP_CheckUpdates(addin_.state(), manual);
        Texts texts;
        for (const auto& box : platform_.messageBoxes.shown) texts.push_back(ToUtf8(box.text));
        return texts;
    }
    std::string NextCheck() {
        return ToUtf8(platform_.settings.texts[{u"Korvane", u"Korvane Explorer", u"UpdateCheck"}]);
    }

    std::unique_ptr<scripted::ScriptedHost> host_ = test::HostWith("=B1", R"("B1":2)");
    scripted::ScriptedPlatform platform_{host_->sharedAccesses()};
    curl::CurlUrlReader reader_;
    platform::Platform services_{platform_.clock,
                                 platform_.files,
                                 platform_.messageBoxes,
                                 platform_.resources,
                                 platform_.screen,
                                 platform_.settings,
                                 platform_.shell,
                                 reader_,
                                 platform_.windows,
                                 platform::ProductVersion{2, 1, 5},
                                 {u"", u"https://example.org", u"support@example.org"}};
    Addin addin_{services_};
};

TEST_F(WebUpdatesTest, NewerEqualAndOlder) {
    const test::WebServer server;
    EXPECT_EQ(Check(server.Address("/says/2.2"), true), Texts{kOffer});
    EXPECT_EQ(Check(server.Address("/says/%20%0A2.2%0D%0A"), true), Texts{kOffer});
    EXPECT_EQ(Check(server.Address("/hops/3"), true), Texts{kOffer});
    for (const char* path : {"/says/2.1", "/says/2.10", "/says/2.0%0A", "/says/1"}) {
        EXPECT_EQ(Check(server.Address(path), true), Texts{kUpToDate}) << path;
    }
}

TEST_F(WebUpdatesTest, GarbageIsNoVersion) {
    const test::WebServer server;
    for (const char* path : {"/says/%3Chtml%3E", "/says/2.2%FF", "/says/2%002", "/says/2,2x"}) {
        EXPECT_EQ(Check(server.Address(path), true), Texts{kNoVersion}) << path;
    }
}

TEST_F(WebUpdatesTest, WhatCannotBeReadIsNoConnection) {
    const test::WebServer server;
    for (const auto& address :
         {test::RefusedAddress(), server.Address("/status/404"), server.Address("/size/70000"),
          server.Address("/loop"), server.Address("/cut"), server.Address("/says/"),
          server.Address("/to/file:%2F%2F%2Fetc%2Fhostname"), std::u16string(),
          std::u16string(u"file:///etc")}) {
        EXPECT_EQ(Check(address, true), Texts{kNoConnection}) << ToUtf8(address);
        EXPECT_EQ(Check(address, false), Texts());
    }
}

TEST_F(WebUpdatesTest, TheNextCheckIsAfterTwoDaysOrFive) {
    const test::WebServer server;
    EXPECT_EQ(Check(server.Address("/says/2.1"), false), Texts());
    EXPECT_EQ(NextCheck(), "46344.5");
    platform_.clock.Advance(1);
    EXPECT_EQ(Check(server.Address("/says/2.2"), false), Texts());  // not due
    platform_.clock.Advance(1);
    EXPECT_EQ(Check(server.Address("/says/2.2"), false), Texts{kOffer});  // declined
    EXPECT_EQ(NextCheck(), "46349.5");
    platform_.clock.Advance(4);
    EXPECT_EQ(Check(server.Address("/says/2.2"), false), Texts());
    platform_.clock.Advance(1);
    EXPECT_EQ(Check(server.Address("/says/2.2"), false, platform::MessageAnswer::kYes),
              Texts{kOffer});
    ASSERT_EQ(platform_.shell.opened.size(), 1U);
    EXPECT_EQ(platform_.shell.opened[0].address, u"https://example.org/explorer/download");
    EXPECT_EQ(NextCheck(), "46351.5");
    platform_.clock.Advance(2);
    EXPECT_EQ(Check(test::RefusedAddress(), false), Texts());
    EXPECT_EQ(NextCheck(), "46353.5");
}

}  // namespace
}  // namespace korvane
