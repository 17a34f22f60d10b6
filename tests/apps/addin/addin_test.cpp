// The dialogs, the help and the update check, through the commands that a user
// has for them.
#include "apps/addin/addin.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "bindings/scripted/scripted_platform.h"
#include "host/addin/controls.h"
#include "host/addin/update_check.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using platform::Button;
using platform::CheckBox;
using platform::Clicked;
using platform::ComboBox;
using platform::Form;
using platform::ItemChosen;
using platform::MessageAnswer;
using platform::MessageIcon;
using platform::TextBox;
using platform::TextEdited;
using platform::Toggled;
using Texts = std::vector<std::string>;

class AddinTest : public testing::Test {
protected:
    AddinTest() {
        host_->thisWorkbookName = u"KorvaneExplorer.xla";
        host_->thisWorkbookPath = u"C:\\Add-ins";
        host_->hwnd = 7;
        platform_.clock.now = {2026, 11, 16, 12, 0, 0};
    }
    ~AddinTest() override {
        addin_.main().ShutDown();
        addin_.state().ribbon.reset();
        EXPECT_EQ(host_->LiveHandles(), 0);
        EXPECT_TRUE(platform_.windows.forms().empty());
    }

    void Open() { addin_.main().AutoOpen(host_->Application(), host_->AddinWorkbook()); }
    Form& form() { return *platform_.windows.forms().rbegin()->second; }
    // Something that the user does to the dialog that is open.
    template <class E>
    void Do(const char16_t* control, E event) {
        event.window = form().Id();
        event.control = form().Get<platform::Control>(control).Id();
        platform_.windows.Deliver(event);
    }
    void Later(std::function<void()> step) { platform_.modal.steps.push_back(std::move(step)); }
    void Press(const char16_t* button) {
        Later([this, button] { Do(button, Clicked()); });
    }
    std::u16string& Setting(const char16_t* key) {
        return platform_.settings.texts[{u"Korvane", u"Korvane Explorer", key}];
    }
    Texts Boxes() const {
        Texts texts;
        for (const auto& box : platform_.messageBoxes.shown) texts.push_back(ToUtf8(box.text));
        return texts;
    }
    CGlobalOptions& options() { return *addin_.state().options; }
    std::size_t ExploreButtons() const {
        const std::string bars = host_->BarsText();
        std::size_t count = 0;
        for (auto at = bars.find("kvxExplore"); at != std::string::npos;
             at = bars.find("kvxExplore", at + 1)) {
            ++count;
        }
        return count;
    }

    std::unique_ptr<scripted::ScriptedHost> host_ = test::HostWith("=B1", R"("B1":2)");
    scripted::ScriptedPlatform platform_{host_->sharedAccesses()};
    Addin addin_{platform_.Services()};
};

// ---- settings --------------------------------------------------------------

TEST_F(AddinTest, TheDialogShowsTheSettings) {
    Open();
    options().SetbPreciseCalc(true);
    options().SetbHighlightCells(false);
    Later([this] {
        EXPECT_EQ(form().Caption(), u"Korvane Explorer Settings");
        const auto ticked = [this](const char16_t* name) {
            return form().Get<CheckBox>(name).Checked();
        };
        EXPECT_TRUE(ticked(u"chkPrecise"));
        EXPECT_FALSE(ticked(u"chkHighlightCells"));
        EXPECT_TRUE(ticked(u"chkFormulaColour"));
        EXPECT_TRUE(ticked(u"chkFormulaUnderline"));
        EXPECT_FALSE(ticked(u"chkFormulaBold"));
        EXPECT_TRUE(ticked(u"chkShowIcon"));
        EXPECT_EQ(form().Get<ComboBox>(u"cmbMainKey").Items(),
                  (std::vector<std::u16string>{u"Ctrl +", u"Alt +", u"Ctrl+Alt +"}));
        EXPECT_EQ(form().Get<ComboBox>(u"cmbMainKey").ListIndex(), 0);
        EXPECT_EQ(form().Get<ComboBox>(u"cmbBackKey").ListIndex(), 1);
        EXPECT_EQ(form().Get<TextBox>(u"txtMainKey").Text(), u"q");
        EXPECT_EQ(form().Get<CheckBox>(u"chkShowIcon").Caption(),
                  u"&Show icon on Formula Auditing toolbar");
        EXPECT_TRUE(form().Get<Button>(u"cmdOK").Enabled());
    });
    Press(u"cmdCancel");
    addin_.commands().EP_Options();
}

TEST_F(AddinTest, OkStoresWhatWasChanged) {
    Open();
    Later([this] { Do(u"chkPrecise", Toggled{0, 0, true}); });
    Later([this] { Do(u"chkFormulaBold", Toggled{0, 0, true}); });
    Later([this] { Do(u"chkFormulaColour", Toggled{0, 0, false}); });
    Later([this] { Do(u"txtMainKey", TextEdited{0, 0, u"w"}); });
    Later([this] { Do(u"cmbBackKey", ItemChosen{0, 0, 2}); });
    Press(u"cmdOK");
    addin_.commands().EP_Options();
    EXPECT_EQ(Setting(u"optPreciseCalc"), u"1");
    EXPECT_EQ(Setting(u"optFormulaBold"), u"1");
    EXPECT_EQ(Setting(u"optFormulaColour"), u"0");
    EXPECT_EQ(Setting(u"optMainKey"), u"^w");
    EXPECT_EQ(Setting(u"optBackKey"), u"^%q");
    EXPECT_EQ(host_->keys, (std::map<std::u16string, std::u16string>{
                               {u"^w", u"KorvaneExplore"}, {u"^%q", u"KorvaneExplorerGoBack"}}));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(AddinTest, CancelAndTheCloseBoxStoreNothing) {
    Open();
    for (const bool closeBox : {false, true}) {
        Later([this] { Do(u"chkPrecise", Toggled{0, 0, true}); });
        Later([this] { Do(u"txtMainKey", TextEdited{0, 0, u"w"}); });
        if (closeBox) {
            Later([this] { platform_.windows.Deliver(platform::CloseAsked{form().Id(), true}); });
        } else {
            Press(u"cmdCancel");
        }
        platform_.settings.writes.clear();
        addin_.commands().EP_Options();
        EXPECT_TRUE(platform_.settings.writes.empty());
        EXPECT_EQ(host_->keys.count(u"^q"), 1U);
    }
}

TEST_F(AddinTest, TheHostsEndClosesTheDialog) {
    Open();
    Later([this] { platform_.windows.Deliver(platform::CloseAsked{form().Id(), false}); });
    addin_.commands().EP_Options();
    EXPECT_TRUE(platform_.windows.forms().empty());
}

TEST_F(AddinTest, TheSameKeysForBothClash) {
    Open();
    Later([this] {
        const auto& ok = form().Get<Button>(u"cmdOK");
        const auto& main = form().Get<TextBox>(u"txtMainKey");
        const auto& back = form().Get<TextBox>(u"txtBackKey");
        Do(u"cmbBackKey", ItemChosen{0, 0, 0});
        EXPECT_FALSE(ok.Enabled());
        EXPECT_EQ(main.BackColour(), platform::Rgb(255, 255, 0));
        EXPECT_EQ(back.BackColour(), platform::Rgb(255, 255, 0));
        Do(u"cmdOK", Clicked());  // a view that lags behind
        EXPECT_TRUE(form().IsShown());
        Do(u"txtBackKey", TextEdited{0, 0, u"x"});
        EXPECT_TRUE(ok.Enabled());
        EXPECT_EQ(main.BackColour(), platform::kDesktopColour);
        EXPECT_EQ(back.BackColour(), platform::kDesktopColour);
        Do(u"txtMainKey", TextEdited{0, 0, u""});
        EXPECT_TRUE(ok.Enabled());
    });
    Press(u"cmdCancel");
    addin_.commands().EP_Options();
}

TEST_F(AddinTest, AnEmptyLetterIsRefusedByOk) {
    Open();
    Later([this] { Do(u"txtMainKey", TextEdited{0, 0, u""}); });
    Press(u"cmdOK");
    Later([this] {
        EXPECT_TRUE(form().IsShown());
        EXPECT_EQ(Boxes(),
                  Texts{"Failed to assign the keyboard shortcuts. Please try other ones."});
        EXPECT_EQ(platform_.messageBoxes.shown[0].icon, MessageIcon::kCritical);
        EXPECT_EQ(platform_.messageBoxes.shown[0].title, u"Korvane Explorer");
        EXPECT_TRUE(platform_.files.lines.empty());
    });
    Press(u"cmdCancel");
    platform_.settings.writes.clear();
    addin_.commands().EP_Options();
    EXPECT_TRUE(platform_.settings.writes.empty());
    EXPECT_EQ(host_->keys.count(u"^q"), 1U);
}

TEST_F(AddinTest, AKeyThatTheHostRefusesKeepsTheOldOnes) {
    Open();
    host_->refusedKeys = {u"^w"};
    Later([this] { Do(u"txtMainKey", TextEdited{0, 0, u"w"}); });
    Press(u"cmdOK");
    Press(u"cmdCancel");
    addin_.commands().EP_Options();
    EXPECT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(options().sMainKey(), u"^q");
    EXPECT_EQ(host_->keys.count(u"^q"), 1U);
}

TEST_F(AddinTest, TheIconGoesAndComes) {
    Open();
    EXPECT_EQ(ExploreButtons(), 2U);
    for (const bool wanted : {false, true}) {
        Later([this, wanted] { Do(u"chkShowIcon", Toggled{0, 0, wanted}); });
        Press(u"cmdOK");
        addin_.commands().EP_Options();
        EXPECT_EQ(ExploreButtons(), wanted ? 2U : 0U);
        EXPECT_EQ(Setting(u"optShowIcon"), wanted ? u"1" : u"0");
        EXPECT_NE(host_->BarsText().find("kvxOptions"), std::string::npos);
    }
}

TEST_F(AddinTest, AnIconThatCannotBeBuiltSkipsTheOtherSettings) {
    Open();
    options().SetbShowIcon(false);
    MControls::RemoveToolbarButtons(addin_.state());
    Later([this] { Do(u"chkShowIcon", Toggled{0, 0, true}); });
    Later([this] { Do(u"chkPrecise", Toggled{0, 0, true}); });
    Later([this] { host_->FailMember("CommandBarControls.Add"); });
    Press(u"cmdOK");
    addin_.commands().EP_Options();
    host_->FailNothing();
    EXPECT_FALSE(options().bPreciseCalc());
    EXPECT_TRUE(options().bShowIcon());
    EXPECT_EQ(Boxes(), Texts{"CommandBarControls.Add failed (bBuildCommandBars)"});
}

TEST_F(AddinTest, OnARibbonItsButtonIsAskedAgain) {
    class Ribbon : public host::IRibbonUI {
    public:
        void InvalidateControl(const std::u16string& id) override { asked.push_back(ToUtf8(id)); }
        Texts asked;
    };
    host_->version = u"12.0";
    const auto ribbon = std::make_shared<Ribbon>();
    addin_.main().RibbonOnLoad(ribbon);
    Open();
    Later([this] {
        EXPECT_EQ(form().Get<CheckBox>(u"chkShowIcon").Caption(),
                  u"&Show icon on Formula Auditing ribbon group");
    });
    Press(u"cmdOK");
    addin_.commands().EP_Options();
    EXPECT_EQ(ribbon->asked, Texts{"kvx2Explore"});
    Press(u"cmdCancel");
    addin_.commands().EP_Options();
    EXPECT_EQ(ribbon->asked.size(), 1U);
}

// Every call fails in turn while the user changes settings and presses OK.
TEST_F(AddinTest, ADialogThatFailsAtAnyCallLeavesNothingBehind) {
    for (const auto* version : {u"11.0", u"12.0"}) {
        host_->version = version;
        Open();
        constexpr int kMost = 500;
        int nth = 1;
        for (; nth < kMost; ++nth) {
            platform_.messageBoxes.shown.clear();
            platform_.modal.steps.clear();
            host_->FailNthCall(nth);
            Later([this] {
                const bool icon = form().Get<CheckBox>(u"chkShowIcon").Checked();
                Do(u"chkShowIcon", Toggled{0, 0, !icon});
            });
            Press(u"cmdOK");
            Press(u"cmdCancel");  // where OK was refused
            addin_.commands().EP_Options();
            const std::string failed = host_->lastFailure();
            host_->FailNothing();
            EXPECT_TRUE(platform_.windows.forms().empty()) << nth << failed;
            EXPECT_LE(platform_.messageBoxes.shown.size(), 1U) << nth << failed;
            EXPECT_EQ(addin_.state().errors.number(), 0) << nth << failed;
            if (failed != "Application.SetEnableEvents") {
                EXPECT_TRUE(host_->enableEvents) << nth << failed;
            }
            EXPECT_TRUE(addin_.state().hostEventsOn) << nth << failed;
            if (failed.empty()) break;
        }
        EXPECT_LT(nth, kMost);
        addin_.main().ShutDown();
    }
}

// ---- help and about --------------------------------------------------------

TEST_F(AddinTest, TheHelpOpensAtItsStartOrATopic) {
    Open();
    platform_.files.existing.insert(u"C:\\Add-ins\\Korvane Explorer.chm");
    for (const std::int32_t topic : {0, -3, 7}) addin_.commands().ShowHelp(topic);
    EXPECT_EQ(platform_.shell.started,
              (std::vector<std::u16string>{u"hh.exe C:\\Add-ins\\Korvane Explorer.chm",
                                           u"hh.exe C:\\Add-ins\\Korvane Explorer.chm",
                                           u"hh.exe -mapid 7 C:\\Add-ins\\Korvane Explorer.chm"}));
}

TEST_F(AddinTest, AMissingHelpFileIsTold) {
    Open();
    addin_.commands().ShowHelp(0);
    EXPECT_EQ(Boxes(), Texts{"Cannot not open the help file:\n\n"
                             "C:\\Add-ins\\Korvane Explorer.chm"});
    EXPECT_TRUE(platform_.shell.started.empty());
}

TEST_F(AddinTest, TheAboutBoxSaysWhatItIs) {
    platform_.version = {2, 1, 5};
    Open();
    Later([this] {
        EXPECT_EQ(form().Caption(), u"About Korvane Explorer");
        EXPECT_EQ(form().Get<platform::Label>(u"lblVersion").Caption(), u"Version 2.1.5");
        const auto& support = form().Get<TextBox>(u"txtSupport");
        EXPECT_EQ(support.Text(), u"support@example.org");
        EXPECT_EQ(support.Selection(), (platform::TextSpan{0, 19}));
        Do(u"txtSupport", platform::Mouse{0, 0, platform::MouseAction::kMove, 0, 0, 1, 1});
        EXPECT_EQ(support.Pointer(), platform::Pointer::kHand);
        Do(u"txtSupport", Clicked());
        Do(u"txtWebsite", Clicked());
        ASSERT_EQ(platform_.shell.opened.size(), 2U);
        EXPECT_EQ(platform_.shell.opened[0].address, u"mailto:support@example.org");
        EXPECT_EQ(platform_.shell.opened[0].owner, form().Handle());
        EXPECT_EQ(platform_.shell.opened[1].address, u"https://example.org");
    });
    Press(u"cmdOK");
    addin_.commands().ShowAbout();
}

TEST_F(AddinTest, ALinkThatCannotBeOpenedIsLogged) {
    Open();
    host_->FailMember("Shell.Open");
    Later([this] { Do(u"txtWebsite", Clicked()); });
    Press(u"cmdOK");
    addin_.commands().ShowAbout();
    EXPECT_EQ(Boxes(), Texts{"Shell.Open failed (txtWebsite_Click)"});
}

// ---- updates ---------------------------------------------------------------

class UpdatesTest : public AddinTest {
protected:
    UpdatesTest() {
        Open();
        Publish(u"2.1");
    }
    void Publish(const char16_t* text) {
        platform_.urls.texts[u"https://example.org/kvversion.txt"] = text;
    }
    void Check(bool manual) {
        platform_.messageBoxes.shown.clear();
        EP_CheckUpdates(addin_.state(), manual);
    }
    static constexpr double kToday = 46342.5;
};

TEST_F(UpdatesTest, TheSameVersionIsUpToDate) {
    for (const auto* same : {u"2.1", u"2.10", u" 2.1\r\n", u"2.0", u"1.9"}) {
        Publish(same);
        Check(true);
        EXPECT_EQ(Boxes(), Texts{"Your version of Korvane Explorer (2.1) is up to date."});
        Check(false);
        EXPECT_EQ(Boxes(), Texts());
    }
}

TEST_F(UpdatesTest, ANewerOneIsOfferedAndItsPageOpened) {
    Publish(u"2.2");
    platform_.messageBoxes.answers = {MessageAnswer::kYes};
    host_->model().screenUpdating = false;
    platform_.messageBoxes.whileShown = [this](const platform::Message&) {
        EXPECT_TRUE(host_->model().screenUpdating);
    };
    Check(false);
    EXPECT_FALSE(host_->model().screenUpdating);
    EXPECT_EQ(Boxes(), Texts{"A new version of Korvane Explorer (2.2) is available for download.\n"
                             "Would you like to visit the website to download it?"});
    EXPECT_EQ(platform_.messageBoxes.shown[0].icon, MessageIcon::kQuestion);
    EXPECT_EQ(platform_.messageBoxes.shown[0].buttons, platform::MessageButtons::kYesNo);
    ASSERT_EQ(platform_.shell.opened.size(), 1U);
    EXPECT_EQ(platform_.shell.opened[0].address, u"https://example.org/explorer/download");
    EXPECT_EQ(platform_.shell.opened[0].owner, 7);
    EXPECT_EQ(Setting(u"UpdateCheck"), u"46344.5");
    host_->model().screenUpdating = true;
}

TEST_F(UpdatesTest, ADeclinedOneIsOfferedAgainAfterFiveDays) {
    Publish(u"3");
    platform_.messageBoxes.answers = {MessageAnswer::kNo};
    Check(false);
    EXPECT_EQ(Setting(u"UpdateCheck"), u"46347.5");
    EXPECT_TRUE(platform_.shell.opened.empty());
    platform_.clock.Advance(4);
    Check(false);
    EXPECT_EQ(Boxes(), Texts());
    platform_.clock.Advance(1);
    Check(false);
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(UpdatesTest, AnAutomaticCheckWaitsForItsDay) {
    Setting(u"UpdateCheck") = u"46343";
    platform_.settings.writes.clear();
    Check(false);
    EXPECT_TRUE(platform_.urls.requests.empty());
    EXPECT_TRUE(platform_.settings.writes.empty());
    for (const auto* due : {u"46342.5", u"46342", u"", u"soon"}) {
        Setting(u"UpdateCheck") = due;
        platform_.urls.requests.clear();
        Check(false);
        EXPECT_EQ(platform_.urls.requests.size(), 1U) << ToUtf8(due);
    }
    Setting(u"UpdateCheck") = u"99999";
    Check(true);  // who asks gets an answer
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(UpdatesTest, FailuresAreToldToWhoAskedAlone) {
    for (const auto* text : {u"", u"  \n", u"<html>", u"2.1.5"}) {
        Publish(text);
        Check(false);
        EXPECT_EQ(Boxes(), Texts());
        EXPECT_EQ(Setting(u"UpdateCheck"), u"46344.5");
        Setting(u"UpdateCheck") = u"0";
        Check(true);
        const bool empty = std::u16string(text).find_first_not_of(u" \n") == std::u16string::npos;
        EXPECT_EQ(Boxes(),
                  Texts{empty ? "Cannot connect to the web server."
                              : "Error while retrieving the version information from the web "
                                "server."});
        EXPECT_EQ(platform_.messageBoxes.shown[0].icon, MessageIcon::kCritical);
    }
    platform_.urls.texts.clear();
    Check(true);
    EXPECT_EQ(Boxes(), Texts{"Cannot connect to the web server."});
    platform_.links.updateServer.clear();
}

TEST_F(UpdatesTest, TheAboutBoxAsks) {
    Later([this] { Do(u"cmdCheckUpdates", Clicked()); });
    Press(u"cmdOK");
    addin_.commands().ShowAbout();
    EXPECT_EQ(Boxes(), Texts{"Your version of Korvane Explorer (2.1) is up to date."});
}

TEST_F(UpdatesTest, TheFirstExploreAsks) {
    addin_.main().Explore();
    addin_.main().Explore();
    EXPECT_EQ(platform_.urls.requests.size(), 1U);
    EXPECT_EQ(platform_.windows.forms().size(), 2U);
}

}  // namespace
}  // namespace korvane
