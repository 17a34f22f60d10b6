#include "host/addin/control_events.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

class ControlEventsTest : public test::RunningAddin {};

TEST_F(ControlEventsTest, OneSinkHearsEveryButton) {
    Open();
    EXPECT_TRUE(Press(u"kvxDocumentation"));
    EXPECT_TRUE(Press(u"kvxExplore"));
    EXPECT_EQ(windows_.topics.size(), 1U);
    EXPECT_EQ(state_.lExplorerCount, 1);
}

TEST_F(ControlEventsTest, AClickWhileADialogIsOpenDoesNothing) {
    Open();
    int opened = 0;
    platform_.modal.steps.push_back([&] {
        opened = static_cast<int>(platform_.windows.forms().size());
        EXPECT_FALSE(Press(u"kvxOptions"));
        EXPECT_EQ(platform_.windows.forms().size(), 1U);
        platform_.windows.forms().begin()->second->Hide();
    });
    EXPECT_TRUE(Press(u"kvxOptions"));
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(platform_.windows.forms().empty());
    // And the next one is heard again.
    EXPECT_TRUE(Press(u"kvxDocumentation"));
}

TEST_F(ControlEventsTest, AnUnknownCommandIsIgnored) {
    Open();
    const auto button = FindCommand(u"kvxDocumentation");
    button->SetParameter(u"kvxNothing");
    bool cancelDefault = false;
    host_->RaiseClick(button, cancelDefault);
    EXPECT_TRUE(cancelDefault);
    EXPECT_TRUE(windows_.topics.empty());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ControlEventsTest, AButtonThatCannotBeReadIsToldAndForgotten) {
    Open();
    const auto button = FindCommand(u"kvxDocumentation");
    accesses().FailMember("CommandBarControl.Parameter");
    bool cancelDefault = false;
    state_.controlEvents->Click(std::dynamic_pointer_cast<host::CommandBarButton>(button),
                                cancelDefault);
    EXPECT_EQ(Boxes(),
              std::vector<std::string>{"CommandBarControl.Parameter failed (mctlButton_Click)"});
    accesses().FailNothing();
    EXPECT_TRUE(Press(u"kvxDocumentation"));
}

}  // namespace
}  // namespace korvane
