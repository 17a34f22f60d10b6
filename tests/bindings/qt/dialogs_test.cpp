// The add-in's dialogs and message boxes, used by keys alone and by the mouse.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

#include "bindings/qt/colours.h"
#include "qt_addin.h"

namespace korvane::test {
namespace {

using Texts = std::vector<std::string>;

const char* const kRefused = "Failed to assign the keyboard shortcuts. Please try other ones.";

class QtDialogs : public ::testing::Test {
protected:
    void Options() { addin_.addin.commands().EP_Options(); }
    void About() { addin_.addin.commands().ShowAbout(); }
    // The controls that Tab reaches, from the first on and once around.
    void ExpectTabOrder(const Texts& expected) {
        for (const std::string& name : expected) {
            addin_.Then([name] { EXPECT_EQ(QtAddin::Focus(), name); });
            addin_.Key(Qt::Key_Tab);
        }
        addin_.Then([first = expected.front()] { EXPECT_EQ(QtAddin::Focus(), first); });
    }
    // Every caption has the room that it needs, nothing stands over anything else
    // and everything stands within the window.
    void ExpectLaidOut() {
        addin_.Then([this] {
            QWidget& window = addin_.Window();
            std::vector<QWidget*> leaves;
            for (auto* child :
                 window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
                if (!child->isVisible()) continue;
                EXPECT_TRUE(window.rect().contains(child->geometry()))
                    << child->objectName().toStdString();
                if (child->inherits("QGroupBox")) continue;
                leaves.push_back(child);
                const bool wraps =
                    child->inherits("QLabel") && static_cast<QLabel*>(child)->wordWrap();
                const QSize needed = wraps ? QSize(0, child->heightForWidth(child->width()))
                                           : child->minimumSizeHint();
                EXPECT_LE(needed.width(), child->width()) << child->objectName().toStdString();
                EXPECT_LE(needed.height(), child->height()) << child->objectName().toStdString();
                if (!child->inherits("QAbstractButton")) continue;
                EXPECT_LE(child->sizeHint().width(), child->width())
                    << child->objectName().toStdString();
            }
            for (auto* a : leaves) {
                for (auto* b : leaves) {
                    EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()))
                        << a->objectName().toStdString() << b->objectName().toStdString();
                }
            }
        });
    }

    QtAddin addin_;
};

// ---- settings ----------------------------------------------------------------

TEST_F(QtDialogs, SettingsHaveRoom) {
    ExpectLaidOut();
    addin_.Key(Qt::Key_Escape);
    Options();
}

TEST_F(QtDialogs, TabReachesAllSettings) {
    ExpectTabOrder({"chkPrecise", "chkFormulaBold", "chkFormulaUnderline", "chkFormulaColour",
                    "chkHighlightCells", "chkShowIcon", "cmbMainKey", "txtMainKey", "cmbBackKey",
                    "txtBackKey", "cmdOK", "cmdCancel"});
    addin_.Key(Qt::Key_Escape);
    Options();
}

TEST_F(QtDialogs, SettingsByKeysAlone) {
    // Precise, bold, underline (left as it is), colour, highlight, icon.
    for (const bool changes : {true, true, false, true, true, true}) {
        if (changes) addin_.Key(Qt::Key_Space);
        addin_.Key(Qt::Key_Tab);
    }
    addin_.Key(Qt::Key_Down);  // Alt +
    addin_.Key(Qt::Key_Tab);
    addin_.Type("w");  // in place of what is selected
    addin_.Key(Qt::Key_Tab);
    addin_.Key(Qt::Key_End);  // Ctrl+Alt +
    addin_.Key(Qt::Key_Return);
    Options();
    EXPECT_EQ(addin_.Setting(u"optPreciseCalc"), "1");
    EXPECT_EQ(addin_.Setting(u"optFormulaBold"), "1");
    EXPECT_EQ(addin_.Setting(u"optHighlightCells"), "0");
    EXPECT_EQ(addin_.Setting(u"optFormulaColour"), "0");
    EXPECT_EQ(addin_.Setting(u"optShowIcon"), "0");
    EXPECT_EQ(addin_.Setting(u"optMainKey"), "%w");
    EXPECT_EQ(addin_.Setting(u"optBackKey"), "^%q");
    EXPECT_EQ(addin_.boxes, Texts());
}

TEST_F(QtDialogs, SettingsByTheMouse) {
    // A list that has just opened takes a release for the end of the opening click.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    addin_.Click("chkPrecise");
    addin_.Click("chkFormulaUnderline");
    addin_.Click("cmbMainKey");
    addin_.Then([this] {
        auto& view = *addin_.Widget<QComboBox>("cmbMainKey").view();
        ASSERT_TRUE(view.isVisible());
        const auto item = view.model()->index(2, 0);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(item).center());
    });
    addin_.Then([this] {
        auto& letter = addin_.Widget<QLineEdit>("txtBackKey");
        QTest::mouseDClick(&letter, Qt::LeftButton, {}, {5, 8});
        QTest::keyClicks(&letter, "z");
    });
    addin_.Click("cmdOK");
    Options();
    EXPECT_EQ(addin_.Setting(u"optPreciseCalc"), "1");
    QApplication::setDoubleClickInterval(interval);
    EXPECT_EQ(addin_.Setting(u"optFormulaUnderline"), "0");
    EXPECT_EQ(addin_.Setting(u"optMainKey"), "^%q");
    EXPECT_EQ(addin_.Setting(u"optBackKey"), "%z");
}

TEST_F(QtDialogs, CancelStoresNothing) {
    for (const int how : {0, 1, 2}) {
        addin_.scripted.settings.writes.clear();
        addin_.Click("chkPrecise");
        if (how == 0) addin_.Key(Qt::Key_Escape);
        if (how == 1) addin_.Click("cmdCancel");
        if (how == 2) addin_.Then([this] { addin_.Window().close(); });
        Options();
        EXPECT_TRUE(addin_.scripted.settings.writes.empty()) << how;
    }
}

TEST_F(QtDialogs, AClashTurnsTheLettersYellowAndStopsOk) {
    for (int k = 0; k < 8; ++k) addin_.Key(Qt::Key_Tab);
    addin_.Key(Qt::Key_Up);  // the same as the other
    addin_.Then([this] {
        EXPECT_EQ(QtAddin::Focus(), "cmbBackKey");
        EXPECT_FALSE(addin_.Widget<QPushButton>("cmdOK").isEnabled());
        for (const char* name : {"txtMainKey", "txtBackKey"}) {
            const QPalette palette = addin_.Widget<QLineEdit>(name).palette();
            EXPECT_EQ(palette.color(QPalette::Base).hue(), QColor(255, 255, 0).hue());
            EXPECT_GE(qt::Contrast(palette.color(QPalette::Base), palette.color(QPalette::Text)),
                      4);
        }
    });
    addin_.Key(Qt::Key_Return);  // no default button that could be pressed
    addin_.Then([this] { EXPECT_TRUE(addin_.Window().isVisible()); });
    addin_.Key(Qt::Key_Down);
    addin_.Then([this] {
        EXPECT_TRUE(addin_.Widget<QPushButton>("cmdOK").isEnabled());
        EXPECT_EQ(addin_.Widget<QLineEdit>("txtMainKey").palette().color(QPalette::Base),
                  QApplication::palette().color(QPalette::Base));
    });
    addin_.Key(Qt::Key_Escape);
    Options();
}

TEST_F(QtDialogs, ARefusedKeyIsToldAboveTheDialog) {
    for (int k = 0; k < 7; ++k) addin_.Key(Qt::Key_Tab);
    addin_.Key(Qt::Key_Backspace);  // the letter, which is selected
    addin_.Key(Qt::Key_Return);
    addin_.Then([this] {
        QMessageBox* box = addin_.view.FindMessage(addin_.lastBox);
        ASSERT_TRUE(box);
        EXPECT_EQ(box->windowTitle(), "Korvane Explorer");
        EXPECT_EQ(box->icon(), QMessageBox::Critical);
        EXPECT_EQ(box->text(), kRefused);
        EXPECT_EQ(box->windowHandle()->transientParent(), addin_.Window().windowHandle());
        EXPECT_EQ(QApplication::activeWindow(), box);
    });
    addin_.Key(Qt::Key_Return);
    addin_.Then([this] {
        EXPECT_TRUE(addin_.Window().isVisible());
        addin_.Window().activateWindow();  // as a window manager would
    });
    addin_.Key(Qt::Key_Escape);
    Options();
    EXPECT_EQ(addin_.boxes, Texts{kRefused});
    EXPECT_EQ(addin_.host->keys.count(u"^q"), 1U);
}

// ---- about --------------------------------------------------------------------

TEST_F(QtDialogs, TheAboutBoxHasRoom) {
    ExpectLaidOut();
    addin_.Key(Qt::Key_Return);
    About();
}

TEST_F(QtDialogs, TabReachesAllOfTheAboutBox) {
    ExpectTabOrder({"cmdOK", "cmdCheckUpdates", "txtSupport", "txtWebsite"});
    addin_.Key(Qt::Key_Escape);
    About();
}

TEST_F(QtDialogs, TheAboutBoxShowsTheLogo) {
    addin_.Then([this] {
        auto& logo = addin_.Widget<QWidget>("Image1");
        const QImage image = logo.grab().toImage();
        const QColor ground = addin_.Window().palette().color(QPalette::Window);
        const QRgb middle = image.pixel(image.width() / 2, image.height() / 8);
        EXPECT_GE(qt::Contrast(QColor(middle), ground), 2);
    });
    addin_.Click("cmdOK");
    About();
}

TEST_F(QtDialogs, TheLinksAreOpenedByTheMouse) {
    addin_.Then([this] {
        auto& support = addin_.Widget<QLineEdit>("txtSupport");
        EXPECT_TRUE(support.isReadOnly());
        QTest::mouseMove(&support, {12, 8});
    });
    addin_.Then([this] {
        EXPECT_EQ(addin_.Widget<QLineEdit>("txtSupport").cursor().shape(), Qt::PointingHandCursor);
    });
    addin_.Click("txtSupport");
    addin_.Click("txtWebsite");
    addin_.Click("cmdOK");
    About();
    ASSERT_EQ(addin_.scripted.shell.opened.size(), 2U);
    EXPECT_EQ(addin_.scripted.shell.opened[0].address, u"mailto:support@example.org");
    EXPECT_EQ(addin_.scripted.shell.opened[1].address, u"https://example.org");
}

TEST_F(QtDialogs, TheAddressesCanBeCopiedByKeys) {
    addin_.Key(Qt::Key_Tab);
    addin_.Key(Qt::Key_Tab);
    addin_.Then([] { EXPECT_EQ(QtAddin::Focus(), "txtSupport"); });
    addin_.Type("x");  // nothing that can be changed
    addin_.Then([this] {
        auto& support = addin_.Widget<QLineEdit>("txtSupport");
        EXPECT_EQ(support.text(), "support@example.org");
        EXPECT_EQ(support.selectedText(), "support@example.org");
    });
    addin_.Key(Qt::Key_Escape);
    About();
    EXPECT_TRUE(addin_.scripted.shell.opened.empty());
}

TEST_F(QtDialogs, UpdatesAreAskedForByKeysAndDeclinedByEscape) {
    addin_.scripted.urls.texts[u"https://example.org/kvversion.txt"] = u"2.2";
    addin_.Key(Qt::Key_Tab);
    addin_.Key(Qt::Key_Space);
    addin_.Then([this] {
        QMessageBox* box = addin_.view.FindMessage(addin_.lastBox);
        ASSERT_TRUE(box);
        EXPECT_EQ(box->icon(), QMessageBox::Question);
        EXPECT_EQ(box->windowHandle()->transientParent(), addin_.Window().windowHandle());
    });
    addin_.Key(Qt::Key_Escape);
    addin_.Then([this] { addin_.Window().activateWindow(); });  // as a window manager would
    addin_.Key(Qt::Key_Escape);
    About();
    EXPECT_EQ(addin_.answers[addin_.lastBox], platform::MessageAnswer::kNo);
    EXPECT_TRUE(addin_.scripted.shell.opened.empty());
    EXPECT_EQ(addin_.Setting(u"UpdateCheck"), "46347.5");
}

TEST_F(QtDialogs, UpdatesAreAskedForByTheMouseAndTheirPageOpened) {
    addin_.scripted.urls.texts[u"https://example.org/kvversion.txt"] = u"2.2";
    addin_.Click("cmdCheckUpdates");
    addin_.Then([this] {
        QMessageBox* box = addin_.view.FindMessage(addin_.lastBox);
        ASSERT_TRUE(box);
        QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    });
    addin_.Click("cmdOK");
    About();
    ASSERT_EQ(addin_.scripted.shell.opened.size(), 1U);
    EXPECT_EQ(addin_.scripted.shell.opened[0].address, u"https://example.org/explorer/download");
}

}  // namespace
}  // namespace korvane::test
