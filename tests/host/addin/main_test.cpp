#include "host/addin/main.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

class MainTest : public test::RunningAddin {
protected:
    class Control : public host::IRibbonControl {
    public:
        explicit Control(std::u16string id) : id_(std::move(id)) {}
        std::u16string Id() override { return id_; }

    private:
        std::u16string id_;
    };
    static host::IRibbonControlPtr RibbonControl(const char16_t* id) {
        return std::make_shared<Control>(id);
    }
};

TEST_F(MainTest, StartUpTakesItsStepsInOrder) {
    accesses().StartLog();
    Open();
    std::vector<std::string> firsts;
    for (const std::string& line : accesses().log()) {
        const std::string member = line.substr(0, line.find(' '));
        const bool withinABar = member.compare(0, 10, "CommandBar") == 0 && member[10] != 's';
        if (withinABar) continue;
        if (firsts.empty() || firsts.back() != member) firsts.push_back(member);
    }
    EXPECT_EQ(firsts, (Texts{"Application.Version",
                             "Application.Caption",
                             "Screen.FindWindow",
                             "Application.SetStatusBar",
                             "Workbook.Path",
                             "SettingsStore.Get",
                             "Clock.Ticks",
                             "Application.CommandBars",
                             "CommandBars.Item",
                             "Application.CommandBars",
                             "CommandBars.Item",
                             "Resources.Picture",
                             "Application.CommandBars",
                             "CommandBars.Item",
                             "Resources.Picture",
                             "Application.CommandBars",
                             "CommandBars.FindControl",
                             "Application.OnKey",
                             "Application.Connect",
                             "Application.SetStatusBar",
                             "Application.SetEnableEvents",
                             "Application.SetCursor"}));
}

TEST_F(MainTest, StartUpFillsTheSharedState) {
    Open();
    EXPECT_TRUE(state_.IsRunning());
    EXPECT_FALSE(state_.hostHasRibbon);
    EXPECT_EQ(state_.hostWindow, 7);
    EXPECT_EQ(state_.addinFolder, u"C:\\Add-ins\\");
    EXPECT_EQ(state_.helpFile, u"C:\\Add-ins\\Korvane Explorer.chm");
    EXPECT_TRUE(state_.hostEventsOn);
    EXPECT_EQ(host_->keys, (std::map<std::u16string, std::u16string>{
                               {u"^q", u"KorvaneExplore"}, {u"%q", u"KorvaneExplorerGoBack"}}));
    ASSERT_TRUE(host_->statusBar.Boolean());
    EXPECT_FALSE(*host_->statusBar.Boolean());
    EXPECT_EQ(host_->cursor, -4143);
    EXPECT_EQ(Boxes(), Texts());
}

TEST_F(MainTest, TheUserSeesThatItLoads) {
    accesses().FailMember("Workbook.Path");
    Open();
    ASSERT_TRUE(host_->statusBar.Text());
    EXPECT_EQ(*host_->statusBar.Text(), u"Loading Korvane Explorer, please wait...");
}

TEST_F(MainTest, AHostOfVersion12HasARibbonAndGetsNoControls) {
    for (const auto* version : {u"12.0", u"16.0"}) {
        host_->version = version;
        Open();
        EXPECT_TRUE(state_.hostHasRibbon);
        EXPECT_EQ(OwnControls(), 0);
        EXPECT_EQ(host_->keys.size(), 2U);
        main_.ShutDown();
    }
    for (const auto* version : {u"11.0", u"9.0", u"9"}) {
        host_->version = version;
        Open();
        EXPECT_FALSE(state_.hostHasRibbon);
        EXPECT_EQ(OwnControls(), 6);
        main_.ShutDown();
    }
}

TEST_F(MainTest, AFolderThatEndsInABackslashIsKeptAsItIs) {
    host_->thisWorkbookPath = u"C:\\Add-ins\\";
    Open();
    EXPECT_EQ(state_.addinFolder, u"C:\\Add-ins\\");
}

TEST_F(MainTest, AHostWindowThatIsNotFoundIsNone) {
    host_->caption = u"Another title";
    Open();
    EXPECT_EQ(state_.hostWindow, 0);
    EXPECT_TRUE(state_.IsRunning());
}

TEST_F(MainTest, AStartThatFailsAfterTheMenusLeavesNoMenu) {
    const std::string before = host_->BarsText();
    accesses().FailMember("Application.Connect");
    Open();
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(host_->BarsText(), before);
    EXPECT_TRUE(host_->keys.empty());
    EXPECT_EQ(host_->LiveHandles(), 0);
    EXPECT_EQ(Boxes(), Texts{"Application.Connect failed (Auto_Open)"});
    EXPECT_EQ(Log(), (Texts{"11/16/26 01:10:30  E11.0A2.1.5  [KorvaneExplorer.xla]CMain.Auto_Open, "
                            "Error 1004: Application.Connect failed (Auto_Open)",
                            ""}));
}

TEST_F(MainTest, MenusThatCannotBeBuiltAreLoggedTwiceAndShownOnce) {
    accesses().FailMember("CommandBarControls.Add", 3);
    Open();
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(Boxes(), Texts{"CommandBarControls.Add failed (bBuildCommandBars)"});
    const std::string front = "11/16/26 01:10:30  E11.0A2.1.5  [KorvaneExplorer.xla]";
    const std::string what = ", Error 1004: CommandBarControls.Add failed (bBuildCommandBars)";
    EXPECT_EQ(Log(), (Texts{front + "MControls.bBuildCommandBars" + what,
                            front + "CMain.Auto_Open" + what, ""}));
}

TEST_F(MainTest, AFailureBeforeTheFolderIsKnownIsLoggedWhereStateIsKept) {
    accesses().FailMember("Application.Caption");
    Open();
    EXPECT_EQ(Log(), Texts());
    EXPECT_EQ(Log(u"/state/korvane\\Error.log").size(), 2U);
}

TEST_F(MainTest, AStoredSettingThatCannotBeReadFailsTheStart) {
    platform_.settings.texts[{u"Korvane", u"Korvane Explorer", u"optShowIcon"}] = u"yes";
    Open();
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(Boxes(), Texts{"Type mismatch (Auto_Open)"});
    platform_.settings.texts.clear();
    Open();
    EXPECT_TRUE(state_.IsRunning());
}

TEST_F(MainTest, KeysThatTheHostRefusesDoNotStopTheStart) {
    host_->refusedKeys = {u"^q"};
    Open();
    EXPECT_TRUE(state_.IsRunning());
    EXPECT_EQ(host_->keys.count(u"%q"), 1U);
}

TEST_F(MainTest, ASecondStartDoesNothing) {
    Open();
    const std::string bars = host_->BarsText();
    const auto handles = host_->LiveHandles();
    Open();
    EXPECT_EQ(host_->BarsText(), bars);
    EXPECT_EQ(host_->LiveHandles(), handles);
}

TEST_F(MainTest, ASecondInstanceSharesTheFirstOnesState) {
    Open();
    {
        CMain second(state_, commands_);
        second.AutoOpen(host_->Application(), host_->AddinWorkbook());
        EXPECT_EQ(OwnControls(), 6);
        second.Explore();
        EXPECT_EQ(state_.lExplorerCount, 1);
    }
    EXPECT_TRUE(state_.IsRunning()) << "the second one's end ended the first";
}

TEST_F(MainTest, TheEndOfTheInstanceReleasesTheHostAndLeavesTheBars) {
    {
        CMain second(state_, commands_);
        second.AutoOpen(host_->Application(), host_->AddinWorkbook());
        second.Explore();
    }
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(host_->LiveHandles(), 0);
    EXPECT_TRUE(host_->keys.empty());
    EXPECT_EQ(OwnControls(), 6);
    EXPECT_TRUE(platform_.windows.forms().empty());
}

TEST_F(MainTest, BeforeItIsOpenedAndAfterItIsShutDownNothingHappens) {
    const auto everything = [this] {
        Value answer;
        main_.Explore();
        main_.GoBack();
        main_.AutoClose();
        main_.AddinUninstall();
        main_.SaveApplicationSettings();
        main_.RibbonCommand(RibbonControl(u"kvx2Explore"));
        main_.RibbonGetButtonVisible(RibbonControl(u"kvx2Explore"), answer);
        EXPECT_TRUE(answer.IsEmpty());
        main_.ShutDown();
    };
    accesses().StartLog();
    everything();
    EXPECT_EQ(accesses().log(), Texts());
    Open();
    main_.ShutDown();
    const auto calls = accesses().calls();
    everything();
    EXPECT_EQ(accesses().calls(), calls);
    EXPECT_EQ(Boxes(), Texts());
}

TEST_F(MainTest, WithoutAHostItDoesNotStart) {
    main_.AutoOpen(nullptr, nullptr);
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(Boxes(), Texts{"The host gave no object (Auto_Open)"});
}

TEST_F(MainTest, ShutDownClosesWindowsAndRemovesEverything) {
    const std::string before = host_->BarsText();
    Open();
    main_.Explore();
    EXPECT_EQ(Tint(u"A1"), 33);
    main_.ShutDown();
    EXPECT_TRUE(state_.shuttingDown);
    EXPECT_TRUE(platform_.windows.forms().empty());
    EXPECT_EQ(Tint(u"A1"), -4142);
    EXPECT_EQ(state_.lExplorerCount, 0);
    EXPECT_EQ(host_->BarsText(), before);
    EXPECT_TRUE(host_->keys.empty());
    EXPECT_TRUE(host_->applicationSinks.empty());
    EXPECT_EQ(host_->LiveHandles(), 0);
}

TEST_F(MainTest, AutoCloseChangesNothing) {
    Open();
    const std::string bars = host_->BarsText();
    const auto calls = accesses().calls();
    main_.AutoClose();
    EXPECT_EQ(accesses().calls(), calls);
    EXPECT_EQ(host_->BarsText(), bars);
    EXPECT_TRUE(state_.IsRunning());
}

TEST_F(MainTest, UninstallingRemovesTheControlsAlone) {
    const std::string before = host_->BarsText();
    Open();
    main_.AddinUninstall();
    EXPECT_EQ(host_->BarsText(), before);
    EXPECT_TRUE(state_.IsRunning());
    EXPECT_EQ(host_->keys.size(), 2U);
}

TEST_F(MainTest, TheRibbonIsKeptBeyondShutDown) {
    class Ribbon : public host::IRibbonUI {
    public:
        void InvalidateControl(const std::u16string& /*id*/) override {}
    };
    const auto ribbon = std::make_shared<Ribbon>();
    main_.RibbonOnLoad(ribbon);
    Open();
    main_.ShutDown();
    EXPECT_EQ(state_.ribbon, ribbon);
}

TEST_F(MainTest, TheRibbonsCommandsAreThoseOfTheMenu) {
    host_->version = u"12.0";
    Open();
    main_.RibbonCommand(RibbonControl(u"kvx2Explore"));
    EXPECT_EQ(state_.lExplorerCount, 1);
    main_.RibbonCommand(RibbonControl(u"KVX2Explore"));
    main_.RibbonCommand(RibbonControl(u"kvx2Nothing"));
    EXPECT_EQ(state_.lExplorerCount, 1);
    main_.RibbonCommand(RibbonControl(u"kvx2Documentation"));
    EXPECT_EQ(windows_.topics, std::vector<std::int32_t>{0});
    EXPECT_EQ(Boxes(), Texts());
}

TEST_F(MainTest, TheRibbonAsksWhetherItsButtonShows) {
    host_->version = u"12.0";
    Open();
    Value answer(u"untouched");
    main_.RibbonGetButtonVisible(RibbonControl(u"kvx2Options"), answer);
    ASSERT_TRUE(answer.Text());
    main_.RibbonGetButtonVisible(RibbonControl(u"kvx2Explore"), answer);
    ASSERT_TRUE(answer.Boolean());
    EXPECT_TRUE(*answer.Boolean());
    state_.options->SetbShowIcon(false);
    main_.RibbonGetButtonVisible(RibbonControl(u"kvx2Explore"), answer);
    EXPECT_FALSE(*answer.Boolean());
}

}  // namespace
}  // namespace korvane
