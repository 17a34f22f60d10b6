// The whole add-in with its windows on a desktop that nobody sees: a scripted
// host, and a user who does one thing after the other.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWindow>
#include <deque>

#include "apps/addin/addin.h"
#include "base/text.h"
#include "bindings/qt/qt_view.h"
#include "bindings/resources/built_in_pictures.h"
#include "bindings/scripted/scripted_platform.h"
#include "platform/modal.h"
#include "platform/window/windows.h"
#include "support/exploring.h"

namespace korvane::test {

class QtAddin : public platform::ModalLoop, public platform::MessageBoxes {
public:
    QtAddin() {
        view.SetPictures(pictures);
        windows.Attach(view);
        scripted.clock.now = {2026, 11, 16, 12, 0, 0};
        addin.main().AutoOpen(host->Application(), host->AddinWorkbook());
    }
    ~QtAddin() override {
        addin.main().ShutDown();
        windows.Detach(view);
        EXPECT_TRUE(steps.empty()) << "the user was not done";
    }

    // What the user does next, once the desktop is at rest.
    void Then(std::function<void()> step) { steps.push_back(std::move(step)); }

    // The user's hands. Keys go to whatever has the focus.
    void Key(int key, Qt::KeyboardModifiers held = {}) {
        Then([key, held] {
            // Through the window, as the desktop gives it: access keys count.
            QWindow* window = QApplication::focusWindow();
            ASSERT_TRUE(window);
            QTest::keyClick(window, static_cast<Qt::Key>(key), held);
        });
    }
    void Type(const char* text) {
        Then([text] { QTest::keyClicks(QApplication::focusWidget(), text); });
    }
    void Click(const char* name, QPoint at = {10, 10}) {
        Then([this, name, at] {
            QTest::mouseClick(&Widget<QWidget>(name), Qt::LeftButton, {}, at);
        });
    }

    template <class W>
    W& Widget(const char* name) {
        auto* found = Window().findChild<W*>(QString::fromLatin1(name));
        EXPECT_TRUE(found) << name;
        return *found;
    }
    QWidget& Window() { return *view.Find(windows.forms().rbegin()->first); }
    // The name of the control that has the focus.
    static std::string Focus() {
        const QWidget* widget = QApplication::focusWidget();
        return widget ? widget->objectName().toStdString() : "";
    }
    std::string Setting(const char16_t* key) {
        return ToUtf8(scripted.settings.texts[{u"Korvane", u"Korvane Explorer", key}]);
    }

    // ---- the loop and the boxes ----
    void Run(const std::function<bool()>& done) override {
        while (!done()) {
            for (int k = 0; k < 5; ++k) QCoreApplication::processEvents();
            if (done()) break;
            if (steps.empty()) {
                ADD_FAILURE() << "the user has nothing more to do, and a window waits";
                return;
            }
            const auto step = std::move(steps.front());
            steps.pop_front();
            step();
        }
    }
    platform::MessageAnswer Show(const platform::Message& message) override {
        boxes.push_back(ToUtf8(message.text));
        const platform::ModalScope scope(windows, nullptr);
        const std::int32_t id = ++lastBox;
        view.Ask({id, message.text, message.title, message.icon, message.buttons});
        Run([this, id] { return answers.count(id) > 0; });
        return answers[id];
    }

    resources::BuiltInPictures pictures;
    std::unique_ptr<scripted::ScriptedHost> host = HostWith("=B1", R"("B1":2)");
    scripted::ScriptedPlatform scripted{host->sharedAccesses()};
    platform::Windows windows{*this};
    std::deque<std::function<void()>> steps;
    std::vector<std::string> boxes;
    std::map<std::int32_t, platform::MessageAnswer> answers;
    std::int32_t lastBox = 0;
    qt::QtView view{
        {[this](const platform::Event& event) { windows.Deliver(event, &view); },
         [this](const platform::MessageAnswered& answer) { answers[answer.id] = answer.answer; },
         {}}};
    platform::Platform services{scripted.clock,  scripted.files,    *this,          pictures,
                                scripted.screen, scripted.settings, scripted.shell, scripted.urls,
                                windows,         {2, 1, 5},         scripted.links};
    Addin addin{services};
};

}  // namespace korvane::test
