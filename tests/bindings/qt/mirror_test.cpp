// Random changes by the model and random doings of a user, mixed: the model, the
// view's copy and what the widgets show never differ.
#include <QCheckBox>
#include <QHeaderView>
#include <QScrollBar>
#include <random>

#include "shown_form.h"

namespace korvane::test {
namespace {

class Mixed : public ::testing::TestWithParam<unsigned> {
protected:
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); }

    void ModelDoes() {
        auto& tree = shown.Tree();
        auto& text = shown.Text();
        const int size = static_cast<int>(text.Text().size());
        switch (Below(16)) {
            case 0: tree.ClearNodes(); break;
            case 1:
            case 2:
            case 3:
                tree.AddNode(Below(tree.NodeCount() + 1), u"key", u"text\nline", {u"a", u"b"});
                break;
            case 4:
                if (tree.NodeCount() > 0) tree.SelectNode(1 + Below(tree.NodeCount()));
                break;
            case 5:
                if (tree.NodeCount() > 0) tree.SetExpanded(1 + Below(tree.NodeCount()), Below(2));
                break;
            case 6: tree.SetScrollPosition(Below(60)); break;
            case 7: tree.SetColumnWidth(1 + Below(3), Below(300)); break;
            case 8: text.SetText(std::u16string(static_cast<std::size_t>(Below(40)), u'x')); break;
            case 9: text.SetSelection({Below(size + 1), Below(9)}); break;
            case 10: text.SetSelBold(Below(2)); break;
            case 11: text.SetSelColour(Below(2) ? platform::Rgb(0, 0, 255) : 0); break;
            case 12: shown.Precise().SetChecked(Below(2)); break;
            case 13: shown.Precise().SetEnabled(Below(2)); break;
            case 14: shown.form->SetWidth(static_cast<float>(4000 + Below(6000))); break;
            default: shown.windows.LockUpdates(Below(2) ? shown.form.get() : nullptr); break;
        }
    }
    void UserDoes() {
        auto& tree = shown.TreeWidget();
        auto& text = shown.TextWidget();
        constexpr Qt::Key kKeys[] = {Qt::Key_Down, Qt::Key_Up,   Qt::Key_Left,    Qt::Key_Right,
                                     Qt::Key_End,  Qt::Key_Home, Qt::Key_Asterisk};
        switch (Below(8)) {
            case 0:
            case 1:
            case 2: QTest::keyClick(&tree, kKeys[Below(7)]); break;
            case 3: QTest::keyClick(&text, kKeys[Below(6)], Qt::ShiftModifier); break;
            case 4: tree.verticalScrollBar()->setValue(Below(80)); break;
            case 5: tree.header()->resizeSection(Below(3), Below(300)); break;
            case 6:
                QTest::mouseClick(&shown.Widget<QCheckBox>(u"chkPrecise"), Qt::LeftButton);
                break;
            default: shown.Window().resize(300 + Below(400), 300 + Below(200)); break;
        }
    }
    void ExpectSame() {
        ASSERT_TRUE(shown.Agrees());
        auto& tree = shown.Tree();
        auto& widget = shown.TreeWidget();
        const auto& rows = *static_cast<qt::TreeRows*>(widget.model());
        ASSERT_EQ(rows.NodeCount(), tree.NodeCount());
        EXPECT_EQ(qt::TreeRows::NodeOf(widget.currentIndex()), tree.SelectedNode());
        for (int node = 1; node <= tree.NodeCount(); ++node) {
            const QModelIndex index = rows.IndexOf(node);
            EXPECT_EQ(qt::TreeRows::NodeOf(index.parent()), tree.Node(node).parent);
            if (rows.rowCount(index) > 0) {
                EXPECT_EQ(widget.isExpanded(index), tree.Expanded(node)) << node;
            }
        }
        EXPECT_EQ(widget.verticalScrollBar()->value(), tree.ScrollPosition());
        for (int column = 1; column <= 3; ++column) {
            EXPECT_EQ(widget.header()->sectionSize(column - 1), tree.ColumnWidth(column));
        }
        EXPECT_EQ(shown.TextWidget().toPlainText().toStdU16String(), shown.Text().Text());
        EXPECT_EQ(shown.TextWidget().Selected(), shown.Text().Selection());
        for (int at = 0; at < static_cast<int>(shown.Text().Text().size()); ++at) {
            QTextCursor cursor(shown.TextWidget().document());
            cursor.setPosition(at + 1);
            EXPECT_EQ(cursor.charFormat().fontWeight() == QFont::Bold,
                      shown.Text().LookAt(at).bold);
        }
        EXPECT_EQ(shown.Widget<QCheckBox>(u"chkPrecise").isChecked(), shown.Precise().Checked());
    }

    ShownForm shown;
    std::mt19937 random{GetParam()};
};

TEST_P(Mixed, ViewAndModelAgree) {
    SCOPED_TRACE(GetParam());
    for (int k = 0; k < 1500 && !HasFailure(); ++k) {
        SCOPED_TRACE(k);
        Below(3) == 0 ? UserDoes() : ModelDoes();
        if (Below(10) != 0) continue;
        shown.windows.LockUpdates(nullptr);
        ShownForm::Turn();
        ExpectSame();
        // Nothing more comes of itself.
        shown.told.clear();
        ShownForm::Turn();
        EXPECT_TRUE(shown.told.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Mixed, ::testing::Range(1U, 5U));

}  // namespace
}  // namespace korvane::test
