#include "bindings/view_link/crossings.h"

#include <gtest/gtest.h>

namespace korvane::view_link {
namespace {

using namespace platform;

TEST(Crossings, AnEventCrossesAnUnansweredChangeToTheSameControl) {
    Crossings crossings;
    EXPECT_FALSE(crossings.Crosses(Toggled{1, 2, true}));
    crossings.Add(PropertySet{1, 2, Property::kChecked, true}, 5);
    EXPECT_TRUE(crossings.Crosses(Toggled{1, 2, true}));
    EXPECT_FALSE(crossings.Crosses(Toggled{1, 3, true}));
    EXPECT_FALSE(crossings.Crosses(Toggled{2, 2, true}));
    EXPECT_FALSE(crossings.Crosses(FormPlaced{1, {}}));
    crossings.Settle(4);
    EXPECT_TRUE(crossings.Crosses(Toggled{1, 2, true}));
    crossings.Settle(5);
    EXPECT_TRUE(crossings.empty());
}

TEST(Crossings, ALaterChangeKeepsTheControlOpen) {
    Crossings crossings;
    crossings.Add(NodesCleared{1, 1}, 1);
    crossings.Add(NodeAdded{1, 1, {}}, 1);
    crossings.Add(NodeAdded{1, 1, {}}, 2);
    crossings.Settle(1);
    EXPECT_TRUE(crossings.Crosses(NodeSelected{1, 1, 1}));
    crossings.Add(NodeAdded{1, 1, {}}, 3);
    crossings.Settle(2);
    EXPECT_TRUE(crossings.Crosses(NodeSelected{1, 1, 1}));
    crossings.Settle(3);
    EXPECT_FALSE(crossings.Crosses(NodeSelected{1, 1, 1}));
}

TEST(Crossings, TheFocusIsTheWindowsOwn) {
    Crossings crossings;
    crossings.Add(PropertySet{1, kFormItself, Property::kFocus, 3}, 1);
    EXPECT_TRUE(crossings.Crosses(ControlFocused{1, 2}));
    EXPECT_TRUE(crossings.Crosses(FormPlaced{1, {}}));
    EXPECT_FALSE(crossings.Crosses(Clicked{1, 2}));
}

TEST(Crossings, AForeignWindowsFocusIsNobodys) {
    Crossings crossings;
    crossings.Add(WindowFocused{7}, 1);
    EXPECT_TRUE(crossings.empty());
}

}  // namespace
}  // namespace korvane::view_link
