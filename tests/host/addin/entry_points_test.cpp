#include "host/addin/entry_points.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

class EntryPointsTest : public test::RunningAddin {
protected:
    platform::Form& Newest() { return *platform_.windows.forms().rbegin()->second; }
};

TEST_F(EntryPointsTest, ExploreOpensAWindowOverTheHostAndRemembersTheCell) {
    Open();
    main_.Explore();
    EXPECT_TRUE(Newest().IsShown());
    EXPECT_EQ(Newest().Owner(), 7);
    EXPECT_EQ(windows_.lastExplorer.lock()->hwndParent, 0);
    EXPECT_EQ(state_.history->count(), 1U);
    EXPECT_TRUE(host_->enableEvents);
    GoTo(u"C1");
    main_.GoBack();
    EXPECT_EQ(Here(), "[B.xls]S!$A$1");
}

TEST_F(EntryPointsTest, FromAnExplorerNothingIsRemembered) {
    Open();
    main_.Explore();
    GoTo(u"B1");
    commands_.EP_Explore(Newest().Handle());
    EXPECT_EQ(state_.history->count(), 1U);
    EXPECT_EQ(state_.lExplorerCount, 2);
}

TEST_F(EntryPointsTest, WhereNoCellsAreSelectedThereIsNothingToExplore) {
    Open();
    const auto refused = [this] {
        main_.Explore();
        ASSERT_EQ(platform_.messageBoxes.shown.size(), 1U);
        const platform::Message& box = platform_.messageBoxes.shown.back();
        EXPECT_EQ(box.text, u"Nothing to explore. Select a cell first.");
        EXPECT_EQ(box.title, u"Korvane Explorer");
        EXPECT_EQ(box.icon, platform::MessageIcon::kInformation);
        EXPECT_EQ(box.buttons, platform::MessageButtons::kOK);
        EXPECT_TRUE(platform_.windows.forms().empty());
        EXPECT_TRUE(windows_.checks.empty());
        platform_.messageBoxes.shown.clear();
    };
    host_->selectedObject = u"ChartArea";
    refused();
    host_->selectedObject.clear();
    host_->nothingOpen = true;
    refused();
    host_->nothingOpen = false;
    EXPECT_TRUE(Log().empty());
}

TEST_F(EntryPointsTest, TheFirstExploreLooksForANewerVersion) {
    Open();
    main_.GoBack();
    EXPECT_TRUE(windows_.checks.empty());
    main_.Explore();
    main_.Explore();
    EXPECT_EQ(windows_.checks, std::vector<bool>{false});
    main_.ShutDown();
    Open();
    main_.Explore();
    EXPECT_EQ(windows_.checks.size(), 2U);
}

TEST_F(EntryPointsTest, AnExplorerThatFailsIsGone) {
    Open();
    windows_.explores = false;
    main_.Explore();
    EXPECT_TRUE(platform_.windows.forms().empty());
    EXPECT_EQ(state_.lExplorerCount, 0);
    EXPECT_EQ(Tint(u"A1"), -4142);
    EXPECT_EQ(state_.history->count(), 0U);
    EXPECT_TRUE(host_->enableEvents);
    EXPECT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Log().size(), 2U);  // a line and the blank one
    EXPECT_NE(Log()[0].find("]MEntryPoints.EP_Explore, Error 9997: "), std::string::npos);
}

TEST_F(EntryPointsTest, AClosedExplorerIsLetGoOf) {
    Open();
    main_.Explore();
    main_.Explore();
    const auto watch = windows_.lastExplorer;
    platform_.windows.Deliver(platform::CloseAsked{Newest().Id(), true});
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(state_.lExplorerCount, 1);
    EXPECT_EQ(platform_.windows.forms().size(), 1U);
}

TEST_F(EntryPointsTest, DialogsAreModalOverTheHostAndGoneAfterwards) {
    Open();
    for (const auto* command : {u"kvxOptions", u"kvxAbout"}) {
        bool shown = false;
        platform_.modal.steps.push_back([&] {
            shown = Newest().HowShown() == platform::Shown::kModal && Newest().Owner() == 7;
            EXPECT_EQ(host_->enableEvents, std::u16string(command) == u"kvxAbout");
            platform_.windows.Deliver(platform::Clicked{Newest().Id(), 1});
        });
        Press(command);
        EXPECT_TRUE(shown);
        EXPECT_TRUE(platform_.windows.forms().empty());
        EXPECT_TRUE(host_->enableEvents);
    }
}

TEST_F(EntryPointsTest, WhatTheHostRefusesOnTheWayBackIsPassedOver) {
    Open();
    main_.Explore();
    accesses().FailMember("Range.Select");
    main_.GoBack();
    EXPECT_TRUE(Boxes().empty());
}

}  // namespace
}  // namespace korvane
