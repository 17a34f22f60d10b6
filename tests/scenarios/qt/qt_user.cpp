#include "scenarios/qt/qt_user.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "bindings/qt/formula_pane.h"
#include "bindings/qt/tree_control.h"

namespace korvane::test {
namespace {

using platform::Form;
namespace names = explorer_controls;

Qt::Key QtKey(Key key) {
    switch (key) {
        case Key::kUp: return Qt::Key_Up;
        case Key::kDown: return Qt::Key_Down;
        case Key::kLeft: return Qt::Key_Left;
        case Key::kRight: return Qt::Key_Right;
        case Key::kHome: return Qt::Key_Home;
        case Key::kEnd: return Qt::Key_End;
        case Key::kExpandAll: return Qt::Key_Asterisk;
        case Key::kSpace: return Qt::Key_Space;
        case Key::kTab: return Qt::Key_Tab;
        case Key::kEnter: return Qt::Key_Return;
        case Key::kEscape: return Qt::Key_Escape;
        case Key::kExplore: break;
    }
    return Qt::Key_Q;
}

void Click(QWidget& widget, const QPoint& at) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
}

}  // namespace

QtUser::QtUser(World& world)
    : world_(world),
      view_({[this](const platform::Event& event) { world_.windows().Deliver(event, &view_); },
             {},
             {}}) {
    view_.SetPictures(pictures_);
    const auto metrics = view_.Metrics();
    world_.screen().twipsPerPixelX = double{metrics.twipsPerPixelX};
    world_.screen().twipsPerPixelY = double{metrics.twipsPerPixelY};
    world_.windows().Attach(view_);
}

QtUser::~QtUser() { world_.windows().Detach(view_); }

qt::FormWindow& QtUser::Shown(const Form& window) {
    qt::FormWindow& shown = *view_.Find(window.Id());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(QApplication::activeWindow(), &shown);
    return shown;
}

template <class W>
W& QtUser::Widget(const Form& window, const char16_t* name) {
    return dynamic_cast<W&>(Shown(window).Find(window.Get<platform::Control>(name).Id())->widget());
}

// Through the window, as the desktop gives it.
void QtUser::Press(Form& window, Key key) {
    QWindow* target = Shown(window).windowHandle();
    ASSERT_EQ(QApplication::focusWindow(), target);
    QTest::keyClick(target, QtKey(key),
                    key == Key::kExplore ? Qt::ControlModifier : Qt::NoModifier);
}

void QtUser::ClickRow(Form& window, std::int32_t node) {
    auto& tree = Widget<qt::ColumnTree>(window, names::kTree);
    const auto index = static_cast<qt::TreeRows*>(tree.model())->IndexOf(node);
    tree.scrollTo(index);
    const QRect row = tree.visualRect(index);
    ASSERT_TRUE(tree.viewport()->rect().contains(row.center()));
    Click(*tree.viewport(), row.center());
}

void QtUser::ClickArrow(Form& window, std::int32_t node) {
    auto& tree = Widget<qt::ColumnTree>(window, names::kTree);
    const auto index = static_cast<qt::TreeRows*>(tree.model())->IndexOf(node);
    tree.scrollTo(index);
    const QRect row = tree.visualRect(index);
    Click(*tree.viewport(), {row.left() - tree.indentation() / 2, row.center().y()});
}

QPoint QtUser::PlaceOf(const Form& window, std::int32_t position) {
    auto& pane = Widget<qt::FormulaText>(window, names::kFormula);
    QTextCursor caret(pane.document());
    caret.setPosition(position);
    const QPoint place = pane.cursorRect(caret).center();
    EXPECT_TRUE(pane.viewport()->rect().contains(place));
    return place;
}

void QtUser::PutCaret(Form& window, std::int32_t position) {
    Click(*Widget<qt::FormulaText>(window, names::kFormula).viewport(), PlaceOf(window, position));
}

void QtUser::SelectText(Form& window, platform::TextSpan span) {
    QWidget& viewport = *Widget<qt::FormulaText>(window, names::kFormula).viewport();
    QTest::mousePress(&viewport, Qt::LeftButton, {}, PlaceOf(window, span.start));
    const QPoint end = PlaceOf(window, span.start + span.length);
    QTest::mouseMove(&viewport, end);
    QTest::mouseRelease(&viewport, Qt::LeftButton, {}, end);
}

void QtUser::ClickBox(Form& window, const char16_t* box) {
    auto& widget = Widget<QCheckBox>(window, box);
    Click(widget, {8, widget.height() / 2});
}

void QtUser::ClickClose(Form& window) {
    auto& button = Widget<QPushButton>(window, names::kClose);
    Click(button, button.rect().center());
}

// The bar comes after the pointer, which rests meanwhile.
void QtUser::DragSplitter(Form& window, int down) {
    auto& bar = Widget<QWidget>(window, names::kSplitter);
    const auto& model = window.Get<platform::Control>(names::kSplitter);
    const QPoint grip = bar.rect().center();
    const QPoint pointer = bar.mapToParent(grip) + QPoint(0, down);
    QTest::mousePress(&bar, Qt::LeftButton, {}, grip);
    for (float before = -1; std::abs(model.Top() - before) > 0.25F;) {
        before = model.Top();
        QTest::mouseMove(&bar, bar.mapFromParent(pointer));
        Rest();
    }
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, bar.mapFromParent(pointer));
}

void QtUser::Resize(Form& window, int wider, int higher) {
    qt::FormWindow& shown = Shown(window);
    shown.resize(std::max(1, shown.width() + wider), std::max(1, shown.height() + higher));
}

void QtUser::Close(Form& window) { Shown(window).close(); }

void QtUser::BringToFront(Form& window) {
    view_.Find(window.Id())->activateWindow();
    Rest();
}

void QtUser::Rest() {
    for (int k = 0; k < 5; ++k) QCoreApplication::processEvents();
}

void QtUser::ExpectToSeeAll() {
    const auto& forms = world_.windows().forms();
    ASSERT_EQ(view_.mirror().forms().size(), forms.size());
    for (const auto& [id, form] : forms) {
        EXPECT_TRUE(view_.mirror().forms().at(id) == form->State()) << "window " << id;
        qt::FormWindow& shown = *view_.Find(id);
        EXPECT_TRUE(shown.isVisible());
        const auto widget = [&](const char16_t* name) {
            return &shown.Find(form->Get<platform::Control>(name).Id())->widget();
        };
        auto& tree = dynamic_cast<qt::ColumnTree&>(*widget(names::kTree));
        EXPECT_EQ(qt::TreeRows::NodeOf(tree.currentIndex()), TreeOf(*form).SelectedNode());
        std::vector<std::int32_t> rows;
        for (QModelIndex row = tree.model()->index(0, 0); row.isValid();
             row = tree.indexBelow(row)) {
            rows.push_back(qt::TreeRows::NodeOf(row));
        }
        EXPECT_EQ(rows, VisibleRows(*form));
        auto& pane = dynamic_cast<qt::FormulaText&>(*widget(names::kFormula));
        EXPECT_EQ(pane.toPlainText().toStdU16String(), PaneOf(*form).Text());
        EXPECT_EQ(pane.Selected(), PaneOf(*form).Selection());
        for (const auto* box : {names::kEveryFunction, names::kPrecise}) {
            EXPECT_EQ(dynamic_cast<QCheckBox&>(*widget(box)).isChecked(),
                      form->Get<platform::CheckBox>(box).Checked());
        }
    }
}

}  // namespace korvane::test
