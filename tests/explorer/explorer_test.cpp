#include "explorer/explorer.h"

#include "explorer/explorer_fixture.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

class ExplorerTest : public test::ExplorerFixture {};

TEST_F(ExplorerTest, ShowsTheCellsTreeAndItsFormula) {
    main_.Explore();
    EXPECT_EQ(TreeText(), R"(A1 | S | 1
  IF |  | 5
    condition |  | True
      B1 | S | 2
    if true (chosen) |  | 5
      SUM |  | 5
        B1 | S | 2
        C1 | S | 3
    if false |  | 3
      OFFSET |  | 3
        B1 | S | 2
  Rate | S!D1 | 4
)");
    EXPECT_EQ(pane().Text(), u"=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate");
}

TEST_F(ExplorerTest, IsAsDesigned) {
    main_.Explore();
    EXPECT_EQ(form().Name(), u"FExplorer");
    EXPECT_EQ(form().Caption(), u"Korvane Explorer");
    EXPECT_TRUE(form().Resizable());
    Texts columns;
    for (const auto& column : tree().Columns()) {
        columns.push_back(ToUtf8(column.key) + ":" + ToUtf8(column.text));
    }
    EXPECT_EQ(columns, (Texts{":Element", "LOCATION:Location", "VALUE:Value"}));
    EXPECT_EQ(functions().Caption(), u"&Functions");
    EXPECT_EQ(precise().Caption(), u"&Precise evaluation");
    EXPECT_EQ(Get<platform::Button>(explorer_controls::kClose).Caption(), u"Close");
}

TEST_F(ExplorerTest, TheRootIsExpandedAndNothingIsSelected) {
    main_.Explore();
    EXPECT_TRUE(tree().Expanded(1));
    for (std::int32_t node = 2; node <= tree().NodeCount(); ++node) {
        EXPECT_FALSE(tree().Expanded(node)) << node;
        EXPECT_EQ(tree().Node(node).key, u"node " + ToUtf16(std::to_string(node)));
    }
    EXPECT_EQ(tree().SelectedNode(), 0);
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(Here(), "[B.xls]S!$A$1");
    EXPECT_EQ(Tint(u"A1"), -4142);
}

TEST_F(ExplorerTest, AConstantHasItsRootAlone) {
    GoTo(u"C1");
    main_.Explore();
    EXPECT_EQ(TreeText(), "C1 | S | 3\n");
    EXPECT_TRUE(tree().Expanded(1));
    EXPECT_EQ(pane().Text(), u"3");
    EXPECT_FALSE(precise().Enabled());
    EXPECT_TRUE(precise().Checked());
}

TEST_F(ExplorerTest, FurtherWindowsStandOffTheirStoredPlace) {
    Setting(u"FExplorer") = u"1200;300;6000;9000";
    main_.Explore();
    EXPECT_EQ(form().GetPlace(), (platform::Place{300, 1200, 9000, 6000}));
    Setting(u"FExplorer") = u"1200;300;6000;9000";
    main_.Explore();
    EXPECT_EQ(form().GetPlace(), (platform::Place{500, 1400, 9000, 6000}));
    Setting(u"FExplorer") = u"1200;300;6000;9000";
    main_.Explore();
    EXPECT_EQ(form().GetPlace(), (platform::Place{500, 1400, 9000, 6000}));
    EXPECT_EQ(state_.lExplorerCount, 3);
}

TEST_F(ExplorerTest, ClosingGivesTheFocusBackToWhoOpenedIt) {
    platform::WindowsMirror view;
    platform_.windows.Attach(view);
    main_.Explore();
    const std::int64_t opener = form().Handle();
    Select(2);
    Key(explorer_controls::kTree, 'Q', platform::kCtrl);
    ASSERT_EQ(platform_.windows.forms().size(), 2U);
    Key(explorer_controls::kTree, platform::kKeyEnter, 0);
    EXPECT_EQ(view.focused(), opener);
    Key(explorer_controls::kTree, platform::kKeyEnter, 0);
    EXPECT_EQ(view.focused(), 7);
    platform_.windows.Detach(view);
}

TEST_F(ExplorerTest, AnOpenerThatIsGoneCannotTakeTheFocus) {
    platform::WindowsMirror view;
    platform_.windows.Attach(view);
    main_.Explore();
    platform::Form& opener = form();
    Select(2);
    Key(explorer_controls::kTree, 'Q', platform::kCtrl);
    opener.Unload();
    EXPECT_EQ(platform_.windows.forms().size(), 1U) << "closing the opener closes it alone";
    form().Unload();
    EXPECT_EQ(view.focused(), 7);
    platform_.windows.Detach(view);
}

TEST_F(ExplorerTest, ClosingGivesCellsAndHandlesBack) {
    const int handles = host_->LiveHandles();
    main_.Explore();
    Select(2);
    EXPECT_NE(host_->LiveHandles(), handles);
    platform_.windows.Deliver(platform::CloseAsked{form().Id(), true});
    EXPECT_EQ(Tint(u"B1"), -4142);
    EXPECT_EQ(state_.lExplorerCount, 0);
    // The history holds the explored cell.
    EXPECT_EQ(host_->LiveHandles(), handles + 1);
}

TEST_F(ExplorerTest, TheAddInGoesWhileABoxOfAWindowIsOpen) {
    main_.Explore();
    int boxes = 0;
    platform_.messageBoxes.whileShown = [&](const platform::Message&) {
        ++boxes;
        main_.ShutDown();
        EXPECT_TRUE(platform_.windows.forms().empty());
    };
    accesses().FailMember("Range.Formula");
    Deliver(explorer_controls::kEveryFunction, platform::Toggled{0, 0, !functions().Checked()});
    accesses().FailNothing();
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(state_.application, nullptr);
    EXPECT_EQ(host_->LiveHandles(), 0);
    // And it can be started again.
    platform_.messageBoxes.whileShown = {};
    Open();
    main_.Explore();
    EXPECT_EQ(platform_.windows.forms().size(), 1U);
}

TEST_F(ExplorerTest, WindowsAreIndependent) {
    main_.Explore();
    const auto rows = tree().NodeCount();
    platform::Form& first = form();
    GoTo(u"B1");
    main_.Explore();
    EXPECT_EQ(pane().Text(), u"=C1-1");
    EXPECT_EQ(first.Get<platform::TreeView>(explorer_controls::kTree).NodeCount(), rows);
}

TEST_F(ExplorerTest, AFailedExplorationLeavesNoWindow) {
    accesses().FailMember("Range.Formula");
    main_.Explore();
    accesses().FailNothing();
    EXPECT_TRUE(platform_.windows.forms().empty());
    EXPECT_EQ(state_.lExplorerCount, 0);
    EXPECT_EQ(Boxes(), Texts{"Range.Formula failed (bInitRoot)"});
    const Texts log = Log();
    ASSERT_EQ(log.size(), 4U);
    EXPECT_NE(log[0].find("CElement.bInitRoot, Error 1004: "), std::string::npos);
    EXPECT_NE(log[1].find("FExplorer.bExplore, Error 1004: "), std::string::npos);
    EXPECT_NE(log[2].find("MEntryPoints.EP_Explore, Error 1004: "), std::string::npos);
    EXPECT_EQ(log[3], "");
}

TEST_F(ExplorerTest, AnExplorationThatFailsHalfwayGivesTheCalculationBack) {
    state_.options->SetbPreciseCalc(true);
    accesses().FailMember("Range.SetFormula");
    main_.Explore();
    EXPECT_EQ(host_->model().calculation, -4105);
    EXPECT_TRUE(host_->model().screenUpdating);
}

TEST_F(ExplorerTest, StoredBoundsThatAreNoneFailTheWindowAndNothingElse) {
    Setting(u"FExplorer") = u"rubbish";
    main_.Explore();
    EXPECT_EQ(Boxes(), Texts{"Type mismatch (EP_Explore)"});
    EXPECT_TRUE(platform_.windows.forms().empty());
    EXPECT_EQ(state_.lExplorerCount, 0);
    Setting(u"FExplorer").clear();
    main_.Explore();
    EXPECT_EQ(state_.lExplorerCount, 1);
}

}  // namespace
}  // namespace korvane
