#include "bindings/qt/form_window.h"

#include <QCheckBox>
#include <QPushButton>

#include "shown_form.h"

namespace korvane::test {
namespace {

using platform::Clicked;
using platform::ControlFocused;
using platform::FormPlaced;
using platform::KeyDown;
using platform::Mouse;
using platform::MouseAction;
using platform::Place;
using platform::Toggled;

TEST(QtForm, IsAsDesigned) {
    ShownForm shown;
    const auto& window = shown.Window();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.windowTitle(), "Small explorer");
    EXPECT_EQ(shown.form->FocusedControl(), shown.Tree().Id());
    EXPECT_TRUE(shown.Widget<QCheckBox>(u"chkFunctions").isVisible());
    // No caption clips.
    for (const auto* name : {u"chkFunctions", u"chkPrecise"}) {
        const auto& box = shown.Widget<QCheckBox>(name);
        EXPECT_LE(box.sizeHint().width(), box.width());
        EXPECT_LE(box.sizeHint().height(), box.height());
    }
}

TEST(QtForm, TheUsersResizingIsToldOnceAndControlsFollow) {
    ShownForm shown;
    int resized = 0;
    shown.form->onResize = [&] {
        ++resized;
        Place place = shown.Tree().GetPlace();
        place.width += 300;
        shown.Tree().Move(place);
    };
    const int before = shown.TreeWidget().width();
    shown.Window().resize(shown.Window().width() + 30, shown.Window().height());
    ShownForm::Turn();
    EXPECT_EQ(shown.Told<FormPlaced>().size(), 1U);
    EXPECT_EQ(resized, 1);
    EXPECT_GT(shown.TreeWidget().width(), before);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtForm, TheModelsPlaceIsNotToldBack) {
    ShownForm shown;
    shown.form->Move({2003, 1507, 7001, 5003});
    ShownForm::Turn();
    EXPECT_TRUE(shown.Told<FormPlaced>().empty());
    EXPECT_EQ(shown.form->GetPlace(), (Place{2003, 1507, 7001, 5003}));
    // Snapped back within the user's own resizing.
    const int width = shown.Window().width();
    shown.form->onResize = [&] {
        if (shown.form->Width() < 7000) shown.form->SetWidth(7001);
    };
    shown.Window().resize(width - 50, shown.Window().height());
    ShownForm::Turn();
    EXPECT_EQ(shown.Window().width(), width);
    EXPECT_EQ(shown.Told<FormPlaced>().size(), 1U);
    EXPECT_TRUE(shown.Agrees());
}

TEST(QtForm, ChecksAreToldOnce) {
    ShownForm shown;
    QTest::mouseClick(&shown.Widget<QCheckBox>(u"chkFunctions"), Qt::LeftButton, {}, {8, 10});
    EXPECT_EQ(shown.Told<Toggled>(), (std::vector<Toggled>{{1, 5, true}}));
    shown.told.clear();
    shown.Precise().SetChecked(true);
    shown.Precise().SetEnabled(false);
    ShownForm::Turn();
    EXPECT_TRUE(shown.Widget<QCheckBox>(u"chkPrecise").isChecked());
    EXPECT_FALSE(shown.Widget<QCheckBox>(u"chkPrecise").isEnabled());
    EXPECT_TRUE(shown.Told<Toggled>().empty());
}

TEST(QtForm, KeysComeToTheModelWithTheirCodes) {
    ShownForm shown;
    auto& tree = shown.TreeWidget();
    QTest::keyClick(&tree, Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClick(&tree, Qt::Key_F5, Qt::ShiftModifier);
    // Ctrl, Alt and Shift are keys themselves.
    EXPECT_EQ(shown.Told<KeyDown>(),
              (std::vector<KeyDown>{
                  {1, 2, 17, 2}, {1, 2, 18, 6}, {1, 2, 'Q', 6}, {1, 2, 16, 1}, {1, 2, 116, 1}}));
}

TEST(QtForm, EscapePressesTheCancelButton) {
    ShownForm shown;
    QTest::keyClick(&shown.TreeWidget(), Qt::Key_Escape);
    EXPECT_EQ(shown.Told<Clicked>(), (std::vector<Clicked>{{1, 7}}));
    EXPECT_TRUE(shown.Window().isVisible());
}

TEST(QtForm, EnterPressesTheButtonThatHasTheFocus) {
    ShownForm shown;
    auto& button = shown.Widget<QPushButton>(u"cmdCancel");
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(shown.Told<Clicked>().size(), 1U);
}

TEST(QtForm, TheCloseBoxOnlyAsks) {
    ShownForm shown;
    shown.form->onQueryClose = [](bool) { return true; };
    shown.Window().close();
    EXPECT_EQ(shown.Told<platform::CloseAsked>().size(), 1U);
    EXPECT_TRUE(shown.Window().isVisible());
    shown.form->onQueryClose = nullptr;
    shown.Window().close();
    EXPECT_FALSE(shown.form->IsOpen());
}

TEST(QtForm, TabFollowsTheOrder) {
    ShownForm shown;
    std::vector<std::int32_t> order;
    for (int k = 0; k < 5; ++k) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.push_back(shown.form->FocusedControl());
    }
    EXPECT_EQ(order, (std::vector<std::int32_t>{4, 5, 6, 7, 2}));
    EXPECT_EQ(shown.Told<ControlFocused>().size(), 5U);
}

TEST(QtForm, TheModelMovesTheFocus) {
    ShownForm shown;
    shown.Precise().SetFocus();
    ShownForm::Turn();
    EXPECT_TRUE(shown.Widget<QCheckBox>(u"chkPrecise").hasFocus());
    EXPECT_TRUE(shown.Told<ControlFocused>().empty());
}

TEST(QtForm, TheBarTellsOfTheMouse) {
    ShownForm shown;
    auto& bar = shown.Widget<QWidget>(u"lblBar");
    EXPECT_EQ(bar.cursor().shape(), Qt::SizeVerCursor);
    QTest::mousePress(&bar, Qt::LeftButton, {}, {10, 2});
    QTest::mouseMove(&bar, {10, 12});
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {10, 12});
    const auto told = shown.Told<Mouse>();
    ASSERT_GE(told.size(), 2U);
    EXPECT_EQ(told.front().action, MouseAction::kDown);
    EXPECT_EQ(told.front().button, platform::kLeftButton);
    EXPECT_EQ(told.back().action, MouseAction::kUp);
    EXPECT_NEAR(told.back().y - told.front().y, 10 * shown.view.Metrics().twipsPerPixelY, 1);
    QTest::mouseDClick(&bar, Qt::RightButton, {}, {10, 2});
    EXPECT_EQ(shown.Told<Mouse>().back().button, 2);
}

TEST(QtForm, StatusStandsBelowTheDesignedWindow) {
    ShownForm shown;
    const int height = shown.Window().height();
    shown.view.ShowStatus({u"Selected: A1"});
    ShownForm::Turn();
    EXPECT_GT(shown.Window().height(), height);
    shown.view.ShowStatus({u""});
    ShownForm::Turn();
    EXPECT_EQ(shown.Window().height(), height);
    EXPECT_TRUE(shown.Told<FormPlaced>().empty());
}

TEST(QtForm, ALockedWindowIsNotTouched) {
    ShownForm shown;
    shown.windows.LockUpdates(shown.form.get());
    shown.Functions().SetChecked(true);
    ShownForm::Turn();
    EXPECT_FALSE(shown.Widget<QCheckBox>(u"chkFunctions").isChecked());
    shown.windows.LockUpdates(nullptr);
    ShownForm::Turn();
    EXPECT_TRUE(shown.Widget<QCheckBox>(u"chkFunctions").isChecked());
}

TEST(QtForm, AModalWindowKeepsTheUserFromOthers) {
    ShownForm shown;
    auto dialog = shown.windows.Load(SmallExplorer());
    dialog->SetOwner(shown.form->Handle());
    shown.view.Apply(platform::PropertySet{dialog->Id(), 0, platform::Property::kShown,
                                           static_cast<std::int32_t>(platform::Shown::kModal)});
    ShownForm::Turn();
    auto& window = *shown.view.Find(dialog->Id());
    EXPECT_TRUE(window.isModal());
    EXPECT_EQ(window.windowHandle()->transientParent(), shown.Window().windowHandle());
}

TEST(QtForm, MessagesAreAnswered) {
    ShownForm shown;
    const auto ask = [&shown](std::int32_t id, platform::MessageButtons buttons) {
        shown.view.Ask({id, u"Text <b>&", u"Title", platform::MessageIcon::kQuestion, buttons});
        ShownForm::Turn();
        return shown.view.FindMessage(id);
    };
    QMessageBox* box = ask(1, platform::MessageButtons::kYesNo);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text(), "Text <b>&");
    QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    EXPECT_EQ(shown.answers,
              (std::vector<platform::MessageAnswered>{{1, platform::MessageAnswer::kYes}}));
    ask(2, platform::MessageButtons::kYesNo)->close();
    EXPECT_EQ(shown.answers.back().answer, platform::MessageAnswer::kNo);
    ask(3, platform::MessageButtons::kOK)->close();
    EXPECT_EQ(shown.answers.back().answer, platform::MessageAnswer::kOK);
    ask(4, platform::MessageButtons::kOK);
    shown.view.Drop({4});
    ShownForm::Turn();
    EXPECT_EQ(shown.view.FindMessage(4), nullptr);
    EXPECT_EQ(shown.answers.size(), 3U);
}

}  // namespace
}  // namespace korvane::test
