#include "bindings/qt/formula_pane.h"

#include <QClipboard>
#include <QTextBlock>

#include "shown_form.h"

namespace korvane::test {
namespace {

using platform::TextSelected;
using platform::TextSpan;

QTextCharFormat FormatAt(ShownForm& shown, int position) {
    QTextCursor cursor(shown.TextWidget().document());
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

TEST(QtFormulaPane, PositionsAreThoseOfTheText) {
    ShownForm shown;
    const std::u16string text = u"a\r\nb\rc\nd\u2029e\u2028f\tg\uFDD0h\uFFFCi\x01j\U0001F600k" +
                                std::u16string(1, 0xD800) + u"l";
    shown.Text().SetText(text);
    ShownForm::Turn();
    const QTextDocument& document = *shown.TextWidget().document();
    ASSERT_EQ(static_cast<std::size_t>(document.characterCount()), text.size() + 1);
    for (const char16_t letter : std::u16string(u"abcdefghijkl")) {
        const auto at = static_cast<int>(text.find(letter));
        EXPECT_EQ(document.characterAt(at), QChar(letter)) << at;
    }
    shown.TextWidget().selectAll();
    EXPECT_EQ(shown.Text().Selection(), (TextSpan{0, static_cast<std::int32_t>(text.size())}));
    // What is copied is the text itself.
    shown.TextWidget().copy();
    EXPECT_EQ(QApplication::clipboard()->text().size(), static_cast<qsizetype>(text.size()));
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtFormulaPane, KeysMoveTheCaretAndSelect) {
    ShownForm shown;
    shown.TextWidget().setFocus();
    shown.told.clear();
    QTest::keyClick(&shown.TextWidget(), Qt::Key_Right);
    EXPECT_EQ(shown.Told<TextSelected>(), (std::vector<TextSelected>{{1, 4, {1, 0}}}));
    QTest::keyClick(&shown.TextWidget(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(shown.Told<TextSelected>().size(), 2U);
    EXPECT_EQ(shown.Text().Selection(), (TextSpan{1, 1}));
    QTest::keyClick(&shown.TextWidget(), Qt::Key_X);
    EXPECT_EQ(shown.TextWidget().toPlainText(), "=SUM(A1:A2)+B1");
    EXPECT_TRUE(shown.Agrees());
}

// How many of the pane's pixels are not its background.
int Ink(ShownForm& shown) {
    const QImage image = shown.TextWidget().viewport()->grab().toImage();
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(image.width() - 1, image.height() - 1)) ++ink;
        }
    }
    return ink;
}

TEST(QtFormulaPane, EveryTextIsPainted) {
    ShownForm shown;
    const int first = Ink(shown);
    EXPECT_GT(first, 100);
    for (int k = 0; k < 3; ++k) {
        shown.Text().SetText(u"=SUM(A1:A2)+B1");
        ShownForm::Turn();
        EXPECT_EQ(Ink(shown), first) << k;
    }
    // Marked before, plain now.
    shown.Text().SetSelection({1, 6});
    shown.Text().SetSelColour(platform::Rgb(0, 0, 255));
    ShownForm::Turn();
    shown.Text().SetText(u"=SUM(A1:A2)+B1");
    ShownForm::Turn();
    EXPECT_EQ(Ink(shown), first);
}

TEST(QtFormulaPane, AClickWhereTheCaretIsIsToldToo) {
    ShownForm shown;
    ASSERT_EQ(shown.Text().Selection(), TextSpan{});
    QWidget* paper = shown.TextWidget().viewport();
    QTest::mouseClick(paper, Qt::LeftButton, {}, QPoint(1, 8));
    ShownForm::Turn();
    EXPECT_EQ(shown.Told<TextSelected>(), (std::vector<TextSelected>{{1, 4, {0, 0}}}));
    shown.told.clear();
    QTest::mouseClick(paper, Qt::RightButton, {}, QPoint(1, 8));
    ShownForm::Turn();
    EXPECT_TRUE(shown.Told<TextSelected>().empty());
}

TEST(QtFormulaPane, EnterHeldDownIsOneEnter) {
    ShownForm shown;
    for (int k = 0; k < 5; ++k) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, {}, QString(), k > 0);
        QCoreApplication::sendEvent(&shown.TextWidget(), &key);
        QKeyEvent other(QEvent::KeyPress, Qt::Key_Enter, Qt::KeypadModifier, QString(), true);
        QCoreApplication::sendEvent(&shown.TreeWidget(), &other);
    }
    EXPECT_EQ(shown.Told<platform::KeyDown>().size(), 1U);
}

TEST(QtFormulaPane, MarkingLeavesTheUsersSelection) {
    ShownForm shown;
    // As the explorer marks: through the selection, under a lock, which it puts back.
    shown.Text().onSelChange = [&shown, busy = false]() mutable {
        if (std::exchange(busy, true)) return;
        const TextSpan user = shown.Text().Selection();
        shown.windows.LockUpdates(shown.form.get());
        shown.Text().SetSelection({5, 5});
        shown.Text().SetSelBold(true);
        shown.Text().SetSelColour(platform::Rgb(0, 0, 255));
        shown.Text().SetSelection(user);
        shown.windows.LockUpdates(nullptr);
        busy = false;
    };
    QTextCursor cursor = shown.TextWidget().textCursor();
    cursor.setPosition(9);
    cursor.setPosition(7, QTextCursor::KeepAnchor);
    shown.TextWidget().setTextCursor(cursor);
    ShownForm::Turn();
    EXPECT_EQ(shown.Told<TextSelected>(), (std::vector<TextSelected>{{1, 4, {7, 2}}}));
    // The caret is still at the end that the user holds.
    EXPECT_EQ(shown.TextWidget().textCursor().position(), 7);
    EXPECT_EQ(shown.TextWidget().textCursor().anchor(), 9);
    EXPECT_EQ(FormatAt(shown, 5).fontWeight(), QFont::Bold);
    EXPECT_EQ(FormatAt(shown, 5).foreground().color(), QColor(Qt::blue));
    EXPECT_NE(FormatAt(shown, 4).fontWeight(), QFont::Bold);
    EXPECT_NE(FormatAt(shown, 10).fontWeight(), QFont::Bold);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtFormulaPane, AMarkGoesAgain) {
    ShownForm shown;
    shown.Text().SetSelection({1, 4});
    shown.Text().SetSelUnderline(true);
    ShownForm::Turn();
    EXPECT_TRUE(FormatAt(shown, 2).fontUnderline());
    shown.Text().SetSelUnderline(false);
    ShownForm::Turn();
    EXPECT_FALSE(FormatAt(shown, 2).fontUnderline());
    EXPECT_TRUE(shown.told.empty());
}

TEST(QtFormulaPane, EnterIsTheModelsBusiness) {
    ShownForm shown;
    std::vector<std::int32_t> keys;
    shown.Text().onKeyDown = [&](std::int32_t code, std::int32_t shift) {
        keys.push_back(code);
        if (code == platform::kKeyEnter && shift == 0) shown.form->Unload();
    };
    QTest::keyClick(&shown.TextWidget(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(shown.form->IsOpen());
    QTest::keyClick(&shown.TextWidget(), Qt::Key_Return);
    EXPECT_FALSE(shown.form->IsOpen());
    EXPECT_EQ(keys, (std::vector<std::int32_t>{platform::kKeyShift, 13, 13}));
    ShownForm::Turn();
    EXPECT_EQ(shown.view.Find(1), nullptr);
}

}  // namespace
}  // namespace korvane::test
