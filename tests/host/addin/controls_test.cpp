#include "host/addin/controls.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

class ControlsTest : public test::RunningAddin {};

TEST_F(ControlsTest, BuildsTheMenuAndTheButtons) {
    Open();
    EXPECT_EQ(host_->BarsText(), R"(Worksheet Menu Bar
  &File id=30002
  &Tools id=30007
    &Spelling... id=2
    Formula A&uditing id=30028
      &Trace Precedents id=486
      Korvane E&xplorer id=1 tag=kvxButton parameter=kvxExplore group style=1 temporary
      Formula Auditing &Toolbar id=892
    Korvane E&xplorer id=1 group temporary
      &Settings... id=1 tag=kvxButton parameter=kvxOptions temporary
      &Documentation id=1 tag=kvxButton parameter=kvxDocumentation temporary
      &About... id=1 tag=kvxButton parameter=kvxAbout temporary
Formula Auditing
  Korvane E&xplorer id=1 tag=kvxButton parameter=kvxExplore group style=1 temporary
)");
}

TEST_F(ControlsTest, TheExploreButtonsHaveTheirPictureAndMask) {
    platform_.resources.pictures[u"IMGEXPLORE"] = "picture";
    platform_.resources.pictures[u"MSKEXPLORE"] = "mask";
    Open();
    int buttons = 0;
    host_->bars()->Walk([&buttons](scripted::ControlData& control, int /*depth*/) {
        if (control.parameter != u"kvxExplore") return;
        EXPECT_EQ(control.picture, "picture");
        EXPECT_EQ(control.mask, "mask");
        ++buttons;
    });
    EXPECT_EQ(buttons, 2);
}

TEST_F(ControlsTest, BuildingTwiceLeavesOneOfEach) {
    Open();
    const std::string bars = host_->BarsText();
    EXPECT_TRUE(MControls::bBuildCommandBars(state_));
    EXPECT_EQ(host_->BarsText(), bars);
    // As after a change of the setting: the buttons go, and come again.
    MControls::RemoveToolbarButtons(state_);
    EXPECT_EQ(OwnControls(), 4);
    EXPECT_TRUE(MControls::bBuildCommandBars(state_));
    EXPECT_EQ(host_->BarsText(), bars);
}

TEST_F(ControlsTest, AnEarlierSubmenuIsKnownByItsCaptionWithoutTheAccessKey) {
    scripted::ControlData* tools = nullptr;
    host_->bars()->Walk([&tools](scripted::ControlData& control, int /*depth*/) {
        if (control.id == 30007) tools = &control;
    });
    tools->Add(10, 1, u"&korvane EXPLORER");
    Open();
    EXPECT_EQ(host_->BarsText().find("&korvane EXPLORER"), std::string::npos);
}

TEST_F(ControlsTest, WithTheIconOffThereIsTheSubmenuAlone) {
    platform_.settings.texts[{u"Korvane", u"Korvane Explorer", u"optShowIcon"}] = u"0";
    Open();
    EXPECT_EQ(OwnControls(), 4);
    EXPECT_EQ(FindCommand(u"kvxExplore"), nullptr);
    EXPECT_NE(FindCommand(u"kvxOptions"), nullptr);
}

TEST_F(ControlsTest, ClicksAreHeardAlsoAfterBuildingAnew) {
    Open();
    EXPECT_TRUE(MControls::bBuildCommandBars(state_));
    EXPECT_TRUE(Press(u"kvxDocumentation"));
    EXPECT_EQ(windows_.topics.size(), 1U);
}

TEST_F(ControlsTest, AUserWithoutTheAuditingSubmenuGetsTheToolbarButton) {
    const auto bars = host_->Application()->CommandBars();
    const auto tools = bars->Item(u"Worksheet Menu Bar")->Controls()->Item(2)->Controls();
    tools->Item(2)->Delete();
    Open();
    EXPECT_TRUE(state_.IsRunning());
    EXPECT_EQ(OwnControls(), 5);
    main_.ShutDown();
    EXPECT_EQ(OwnControls(), 0);
}

TEST_F(ControlsTest, AnEmptyAuditingSubmenuGetsTheButtonAllTheSame) {
    const auto bars = host_->Application()->CommandBars();
    const auto submenu =
        bars->Item(u"Worksheet Menu Bar")->Controls()->Item(2)->Controls()->Item(2)->Controls();
    while (submenu->Count() > 0) submenu->Item(1)->Delete();
    Open();
    EXPECT_EQ(OwnControls(), 6);
}

TEST_F(ControlsTest, WhatTheUserRemovedIsPassedOver) {
    Open();
    while (const auto button = FindCommand(u"kvxExplore")) button->Delete();
    MControls::RemoveAll(state_);
    EXPECT_EQ(OwnControls(), 0);
    MControls::RemoveAll(state_);
    EXPECT_EQ(Boxes(), std::vector<std::string>());
}

TEST_F(ControlsTest, RemovingGoesOnWhereOneThingCannotBeRemoved) {
    Open();
    accesses().FailMember("CommandBarControl.Delete", 1);
    MControls::RemoveAll(state_);
    EXPECT_EQ(OwnControls(), 1);
}

TEST_F(ControlsTest, AFailureInTheMiddleLeavesNothingHalfMade) {
    Open();
    MControls::RemoveAll(state_);
    const std::string before = host_->BarsText();
    const auto calls = accesses().calls();
    ASSERT_TRUE(MControls::bBuildCommandBars(state_));
    const auto needed = accesses().calls() - calls;
    MControls::RemoveAll(state_);
    for (std::int64_t nth = 1; nth <= needed; ++nth) {
        accesses().FailNthCall(nth);
        EXPECT_FALSE(MControls::bBuildCommandBars(state_)) << nth;
        EXPECT_EQ(host_->BarsText(), before) << nth << " " << accesses().lastFailure();
    }
}

TEST_F(ControlsTest, AHostWithARibbonIsLeftAlone) {
    host_->version = u"12.0";
    Open();
    const auto calls = accesses().calls();
    EXPECT_TRUE(MControls::bBuildCommandBars(state_));
    MControls::RemoveToolbarButtons(state_);
    MControls::RemoveAll(state_);
    EXPECT_EQ(accesses().calls(), calls);
}

TEST_F(ControlsTest, AHostWithoutAToolsMenuCannotBeBuiltIn) {
    host_->Application()->CommandBars()->Item(u"Worksheet Menu Bar")->Controls()->Item(2)->Delete();
    Open();
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(Boxes(), std::vector<std::string>{"The host has no Tools menu (bBuildCommandBars)"});
}

}  // namespace
}  // namespace korvane
