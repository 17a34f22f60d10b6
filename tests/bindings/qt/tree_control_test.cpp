#include "bindings/qt/tree_control.h"

#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>

#include "base/text.h"
#include "shown_form.h"

namespace korvane::test {
namespace {

using platform::ColumnResized;
using platform::NodeSelected;
using platform::NodeToggled;
using platform::Scrolled;

QModelIndex IndexOf(ShownForm& shown, int node) {
    return static_cast<qt::TreeRows*>(shown.TreeWidget().model())->IndexOf(node);
}

TEST(QtTree, ShowsTheRows) {
    ShownForm shown;
    const auto& tree = shown.TreeWidget();
    const QModelIndex root = IndexOf(shown, 1);
    EXPECT_EQ(root.data().toString(), "SUM(A1:A2)+B1");
    EXPECT_EQ(root.siblingAtColumn(1).data().toString(), "Sheet1!C1");
    EXPECT_EQ(root.siblingAtColumn(2).data().toString(), "6");
    EXPECT_TRUE(tree.isExpanded(root));
    EXPECT_FALSE(tree.isExpanded(IndexOf(shown, 2)));
    EXPECT_EQ(tree.model()->rowCount(root), 2);
    EXPECT_EQ(tree.header()->sectionSize(0), 300);
    EXPECT_FALSE(tree.currentIndex().isValid());
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, TheKeyboardSelectsOncePerRow) {
    ShownForm shown;
    int selected = 0;
    shown.Tree().onSelect = [&selected] { ++selected; };
    shown.TreeWidget().setFocus();
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_Down);
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_Down);
    ShownForm::Turn();
    EXPECT_EQ(shown.Told<NodeSelected>(), (std::vector<NodeSelected>{{1, 2, 1}, {1, 2, 2}}));
    EXPECT_EQ(selected, 2);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, AClickSelectsOnce) {
    ShownForm shown;
    const QRect row = shown.TreeWidget().visualRect(IndexOf(shown, 4));
    QTest::mouseClick(shown.TreeWidget().viewport(), Qt::LeftButton, {}, row.center());
    ShownForm::Turn();
    EXPECT_EQ(shown.Told<NodeSelected>(), (std::vector<NodeSelected>{{1, 2, 4}}));
    EXPECT_EQ(shown.Tree().SelectedNode(), 4);
}

TEST(QtTree, WhatTheModelSelectsIsNotToldBack) {
    ShownForm shown;
    shown.Tree().SelectNode(3);
    ShownForm::Turn();
    EXPECT_EQ(qt::TreeRows::NodeOf(shown.TreeWidget().currentIndex()), 3);
    EXPECT_TRUE(shown.TreeWidget().isExpanded(IndexOf(shown, 2)));
    EXPECT_TRUE(shown.told.empty());
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, FocusAloneSelectsNothing) {
    ShownForm shown;
    shown.Functions().SetFocus();
    ShownForm::Turn();
    shown.TreeWidget().setFocus(Qt::TabFocusReason);
    ShownForm::Turn();
    EXPECT_FALSE(shown.TreeWidget().currentIndex().isValid());
    EXPECT_TRUE(shown.Told<NodeSelected>().empty());
}

TEST(QtTree, KeysExpandAndCollapse) {
    ShownForm shown;
    shown.Tree().SelectNode(2);
    ShownForm::Turn();
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_Right);
    EXPECT_EQ(shown.Told<NodeToggled>(), (std::vector<NodeToggled>{{1, 2, 2, true}}));
    EXPECT_TRUE(shown.Tree().Expanded(2));
    shown.Tree().SelectNode(3);
    ShownForm::Turn();
    // The selected row would vanish: the one above it is selected.
    shown.TreeWidget().collapse(IndexOf(shown, 2));
    EXPECT_EQ(shown.Tree().SelectedNode(), 2);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, ADraggedColumnIsTold) {
    ShownForm shown;
    shown.TreeWidget().header()->resizeSection(1, 222);
    EXPECT_EQ(shown.Told<ColumnResized>(), (std::vector<ColumnResized>{{1, 2, 2, 222}}));
    EXPECT_EQ(shown.Tree().ColumnWidth(2), 222);
    shown.told.clear();
    shown.Tree().SetColumnWidth(2, 80);
    ShownForm::Turn();
    EXPECT_EQ(shown.TreeWidget().header()->sectionSize(1), 80);
    EXPECT_TRUE(shown.told.empty());
}

TEST(QtTree, ScrollingIsToldAndKept) {
    ShownForm shown;
    for (int k = 0; k < 200; ++k) {
        shown.Tree().AddNode(1, u"more " + std::u16string(1, char16_t(u'a' + k % 26)), u"x", {});
    }
    ShownForm::Turn();
    QScrollBar& bar = *shown.TreeWidget().verticalScrollBar();
    bar.setValue(40);
    EXPECT_EQ(shown.Told<Scrolled>(), (std::vector<Scrolled>{{1, 2, 40}}));
    EXPECT_EQ(shown.Tree().ScrollPosition(), 40);
    shown.told.clear();
    shown.Tree().SetScrollPosition(77);
    ShownForm::Turn();
    EXPECT_EQ(bar.value(), 77);
    EXPECT_TRUE(shown.told.empty());
    // Beyond the end: the model hears how far it went.
    shown.Tree().SetScrollPosition(1'000'000);
    ShownForm::Turn();
    EXPECT_EQ(shown.Tree().ScrollPosition(), bar.maximum());
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, CopiesRowsAsText) {
    ShownForm shown;
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              "SUM(A1:A2)+B1\tSheet1!C1\t6\n  SUM(A1:A2)\t\t5\n    A1:A2\tA1:A2\t{2;3}\n"
              "  B1\tB1\t1");
    shown.Tree().SelectNode(4);
    ShownForm::Turn();
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "  B1\tB1\t1");
}

TEST(QtTree, ARowSpeaksWhole) {
    ShownForm shown;
    EXPECT_EQ(IndexOf(shown, 4).data(Qt::AccessibleTextRole).toString(),
              "B1; Location: B1; Value: 1");
}

TEST(QtTree, ManyRowsAreFilledAndScrolledAtOnce) {
    ShownForm shown(SmallExplorer(), false);
    auto& tree = shown.Tree();
    tree.AddColumn(u"", u"Element", 300);
    for (int k = 0; k < 10'000; ++k) {
        tree.AddNode(k % 7 == 0 ? 0 : k - k % 7 + 1, u"node", u"A1", {u"B1", u"1"});
    }
    for (int k = 1; k <= 10'000; k += 7) tree.SetExpanded(k, true);
    tree.SelectNode(9'999);
    ShownForm::Turn();
    EXPECT_EQ(qt::TreeRows::NodeOf(shown.TreeWidget().currentIndex()), 9'999);
    EXPECT_TRUE(shown.Agrees());
    tree.ClearNodes();
    ShownForm::Turn();
    EXPECT_EQ(shown.TreeWidget().model()->rowCount(), 0);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtTree, ADeepTreeLeavesRoomForItsTexts) {
    ShownForm shown;
    const int usual = shown.TreeWidget().indentation();
    auto& tree = shown.Tree();
    constexpr std::int32_t kDepth = 40;
    tree.ClearNodes();
    for (std::int32_t node = 1; node <= kDepth; ++node) {
        tree.AddNode(node - 1, u"node " + ToUtf16(std::to_string(node)), u"A1", {u"", u""});
        if (node > 1) tree.SetExpanded(node - 1, true);
    }
    ShownForm::Turn();
    auto& widget = shown.TreeWidget();
    EXPECT_LT(widget.indentation(), usual);
    const auto* rows = static_cast<qt::TreeRows*>(widget.model());
    const QRect deepest = widget.visualRect(rows->IndexOf(kDepth));
    EXPECT_GE(deepest.width(), widget.columnWidth(0) / 3) << "room for a text";
    // A wider column has room for more.
    const int before = widget.indentation();
    tree.SetColumnWidth(1, 3 * widget.columnWidth(0));
    ShownForm::Turn();
    EXPECT_GT(widget.indentation(), before);
    tree.ClearNodes();
    tree.AddNode(0, u"node 1", u"A1", {u"", u""});
    ShownForm::Turn();
    EXPECT_EQ(widget.indentation(), usual);
}

}  // namespace
}  // namespace korvane::test
