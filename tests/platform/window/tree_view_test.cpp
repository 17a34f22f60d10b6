#include "platform/window/tree_view.h"

#include <gtest/gtest.h>

#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

using test::TestWindows;

TEST(TreeView, RowsAreFoundByTheirKeys) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    EXPECT_EQ(tree.NodeCount(), 3);
    EXPECT_EQ(tree.FindNode(u"node 3"), 3);
    EXPECT_EQ(tree.FindNode(u"node 4"), 0);
    EXPECT_EQ(tree.Node(3).text, u"B1");
    EXPECT_EQ(tree.Node(3).parent, 1);
    tree.ClearNodes();
    EXPECT_EQ(tree.NodeCount(), 0);
    EXPECT_EQ(tree.FindNode(u"node 1"), 0);
}

TEST(TreeView, ASelectionIsToldOncePerChange) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    std::vector<std::u16string> seen;
    tree.onSelect = [&] { seen.push_back(tree.SelectedKey()); };
    EXPECT_EQ(tree.SelectedKey(), u"");
    test.Deliver(test::kTree, NodeSelected{0, 0, 2});
    test.Deliver(test::kTree, NodeSelected{0, 0, 2});
    tree.SelectNode(2);
    tree.SelectNode(3);
    tree.SelectNode(9);
    test.Deliver(test::kTree, NodeSelected{0, 0, 0});
    test.Deliver(test::kTree, NodeSelected{0, 0, 4});
    EXPECT_EQ(seen, (std::vector<std::u16string>{u"node 2", u"node 3"}));
}

TEST(TreeView, ClearingTakesTheSelectionWithoutAnEvent) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    tree.SelectNode(2);
    tree.SetScrollPosition(40);
    tree.onSelect = [] { FAIL(); };
    tree.ClearNodes();
    EXPECT_EQ(tree.SelectedNode(), 0);
    EXPECT_EQ(tree.ScrollPosition(), 0);
}

TEST(TreeView, ASelectedRowCanBeSeen) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    const auto deep = tree.AddNode(tree.FindNode(u"node 2"), u"node 4", u"1", {});
    EXPECT_FALSE(tree.Expanded(1));
    tree.SelectNode(deep);
    EXPECT_TRUE(tree.Expanded(1));
    EXPECT_TRUE(tree.Expanded(2));
    EXPECT_FALSE(tree.Expanded(deep));
}

TEST(TreeView, TheUserExpandsResizesAndScrolls) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    test.Deliver(test::kTree, NodeToggled{0, 0, 1, true});
    EXPECT_TRUE(tree.Expanded(1));
    test.Deliver(test::kTree, NodeToggled{0, 0, 9, true});
    test.Deliver(test::kTree, ColumnResized{0, 0, 2, 77});
    EXPECT_EQ(tree.ColumnWidth(2), 77);
    for (const ColumnResized& odd : {ColumnResized{0, 0, 0, 5}, ColumnResized{0, 0, 3, 5},
                                     ColumnResized{0, 0, 2, -1}, ColumnResized{0, 0, 2, 1 << 30}}) {
        test.Deliver(test::kTree, odd);
    }
    EXPECT_EQ(tree.ColumnWidth(2), 77);
    test.Deliver(test::kTree, Scrolled{0, 0, 120});
    test.Deliver(test::kTree, Scrolled{0, 0, -1});
    EXPECT_EQ(tree.ScrollPosition(), 120);
}

TEST(TreeView, AColumnIsNeverNarrowerThanNothing) {
    TestWindows test;
    TreeView& tree = test.Get<TreeView>(test::kTree);
    tree.SetColumnWidth(1, -5);
    EXPECT_EQ(tree.ColumnWidth(1), 0);
    EXPECT_EQ(tree.ColumnCount(), 2);
}

}  // namespace
}  // namespace korvane::platform
