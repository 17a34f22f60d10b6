#include "apps/window/session.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "explorer/explorer_design.h"
#include "support/exploring.h"
#include "user_view.h"

namespace korvane::window {
namespace {

using platform::Property;
using test::UserView;
namespace names = explorer_controls;

constexpr std::int32_t kKeyQ = 'Q';

class SessionTest : public testing::Test {
protected:
    SessionTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "session-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        settings_.folders = {folder_ / "config", folder_ / "state"};
        host_->version = u"12.0";
        host_->hwnd = 0;
        host_->thisWorkbookName = u"korvane";
        host_->thisWorkbookPath = korvane::posix::PosixFiles(settings_.folders).StateFolder();
    }
    ~SessionTest() override {
        EXPECT_EQ(host_->LiveHandles(), 0);
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    void Show(UserView& view) {
        view_link::ViewLink link({});
        link.Adopt(view.TakeCoreEnd());
        ShowExplorer(link, host_->Application(), host_->AddinWorkbook(), settings_);
    }
    // The exit code that it ends with, and the message.
    std::pair<int, std::string> Failure(UserView& view) {
        try {
            Show(view);
        } catch (const command::CommandError& error) {
            return {error.code(), error.what()};
        }
        return {0, ""};
    }
    std::string Stored() const {
        std::ifstream file(settings_.folders.config / "Korvane" / "Korvane.ini");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path folder_;
    SessionSettings settings_;
    std::unique_ptr<scripted::ScriptedHost> host_ =
        korvane::test::HostWith("=B1", R"("B1":"=C1","C1":5)");
};

void CloseAll(UserView& user) {
    while (!user.mirror.forms().empty()) {
        const auto window = user.newest();
        user.Do(platform::CloseAsked{window, true});
        if (!user.WaitUntil([&] { return user.mirror.forms().count(window) == 0; })) return;
    }
}

TEST_F(SessionTest, ExploresOnAndEndsWithTheLastWindow) {
    UserView view([](UserView& user) {
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [B.xls]S!$A$1"));
        const auto first = user.newest();
        ASSERT_EQ(user.Control(first, names::kTree).nodes().size(), 2U);
        EXPECT_EQ(user.Control(first, names::kTree).nodes()[1].text, u"B1");
        user.Do(first, names::kTree, platform::NodeSelected{0, 0, 2});
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [B.xls]S!$B$1"));
        user.Do(first, names::kTree, platform::KeyDown{0, 0, kKeyQ, platform::kCtrl});
        ASSERT_TRUE(user.WaitForWindows(2));
        const auto second = user.newest();
        ASSERT_TRUE(user.WaitUntil(
            [&] { return user.Control(second, names::kTree).nodes().size() == 2U; }));
        EXPECT_EQ(user.Control(second, names::kTree).nodes()[1].text, u"C1");
        CloseAll(user);
    });
    Show(view);
    view.CloseCoreEnd();
    EXPECT_TRUE(view.boxes.empty());
    EXPECT_TRUE(std::filesystem::exists(settings_.folders.config / "Korvane" / "Korvane.ini"));
}

TEST_F(SessionTest, ALostViewIsAnError) {
    UserView view([](UserView& user) {
        EXPECT_TRUE(user.WaitForStatus(u"Selected: [B.xls]S!$A$1"));
        user.Leave();
    });
    const auto [code, message] = Failure(view);
    EXPECT_EQ(code, command::kHostLost);
    EXPECT_NE(message.find("lost"), std::string::npos);
}

TEST_F(SessionTest, AViewThatNeverCameIsAnError) {
    UserView view([](UserView&) {});
    view.Leave();
    const auto [code, message] = Failure(view);
    EXPECT_EQ(code, command::kHostLost);
}

TEST_F(SessionTest, AProgramThatShowsNothingIsAnError) {
    for (const char* program : {"/bin/false", "/nowhere/korvane-view"}) {
        view_link::ViewLink link({program});
        try {
            ShowExplorer(link, host_->Application(), host_->AddinWorkbook(), settings_);
            ADD_FAILURE() << program;
        } catch (const command::CommandError& error) {
            EXPECT_EQ(error.code(), command::kHostLost);
            EXPECT_EQ(std::string(error.what()).find("the window could not be shown: "), 0U);
        }
    }
}

TEST_F(SessionTest, AnExplorationThatFailsIsTold) {
    host_->FailMember("Range.Formula");
    UserView view([](UserView&) {});
    const auto [code, message] = Failure(view);
    host_->FailNothing();
    EXPECT_EQ(code, command::kExplorationFailed);
}

TEST_F(SessionTest, ModesStandInForTheSettingsOnly) {
    settings_.bEveryFunction = false;
    settings_.bPreciseCalc = true;
    UserView view([](UserView& user) {
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [B.xls]S!$A$1"));
        EXPECT_FALSE(
            user.Control(user.newest(), names::kEveryFunction).Get<bool>(Property::kChecked));
        EXPECT_FALSE(user.Control(user.newest(), names::kPrecise).Get<bool>(Property::kVisible));
        CloseAll(user);
    });
    Show(view);
    EXPECT_EQ(Stored().find("optLastMode"), std::string::npos);
    EXPECT_EQ(Stored().find("optPreciseCalc"), std::string::npos);
}

TEST_F(SessionTest, WhatTheUserChoosesIsStored) {
    settings_.bEveryFunction = false;
    UserView view([](UserView& user) {
        ASSERT_TRUE(user.WaitForStatus(u"Selected: [B.xls]S!$A$1"));
        user.Do(user.newest(), names::kEveryFunction, platform::Toggled{0, 0, true});
        CloseAll(user);
    });
    Show(view);
    EXPECT_NE(Stored().find("optLastMode=1"), std::string::npos);
}

}  // namespace
}  // namespace korvane::window
