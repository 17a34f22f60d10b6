// The add-in's dialogs as a user has them before him: the view's own process, a
// window manager, and a real keyboard. Pictures of them are kept.
#include <gtest/gtest.h>

#include <deque>

#include "apps/addin/addin.h"
#include "bindings/scripted/scripted_platform.h"
#include "support/desktop.h"
#include "support/exploring.h"
#include "view_under_test.h"

namespace korvane::test {
namespace {

struct Look {
    const char* name;
    const char* scale;
    bool dark;
};

// Its user does one thing after the other while a window waits.
class SteppedView : public ViewUnderTest {
public:
    using ViewUnderTest::ViewUnderTest;
    void Run(const std::function<bool()>& done) override {
        while (!done()) {
            Settle();
            if (done()) return;
            if (steps.empty()) {
                ADD_FAILURE() << "the user has nothing more to do, and a window waits";
                return;
            }
            const auto step = std::move(steps.front());
            steps.pop_front();
            step();
        }
    }
    std::deque<std::function<void()>> steps;
};

class DialogLooks : public ::testing::TestWithParam<Look>, public platform::MessageBoxes {
protected:
    void SetUp() override {
        const std::string why = Desktop::WhyNot();
        if (!why.empty()) GTEST_SKIP() << "no desktop to test on: " << why;
        desktop_ = std::make_unique<Desktop>();
        auto environment = desktop_->Environment();
        environment.push_back(std::string("QT_SCALE_FACTOR=") + GetParam().scale);
        environment.emplace_back("QT_STYLE_OVERRIDE=Fusion");
        std::vector<std::string> arguments;
        if (GetParam().dark) arguments.emplace_back("--dark");
        view_ = std::make_unique<SteppedView>(environment, arguments);
        ASSERT_TRUE(view_->TakeUntil([this] { return !view_->metrics.empty(); }));
        host_->hwnd = 0;  // no window of this desktop
        services_ = std::make_unique<platform::Platform>(platform::Platform{scripted_.clock,
                                                                            scripted_.files,
                                                                            *this,
                                                                            scripted_.resources,
                                                                            scripted_.screen,
                                                                            scripted_.settings,
                                                                            scripted_.shell,
                                                                            scripted_.urls,
                                                                            view_->windows,
                                                                            {2, 1, 5},
                                                                            scripted_.links});
        addin_ = std::make_unique<Addin>(*services_);
        addin_->main().AutoOpen(host_->Application(), host_->AddinWorkbook());
    }
    void TearDown() override {
        if (addin_) addin_->main().ShutDown();
        addin_.reset();
        view_.reset();
    }
    void Key(const std::string& keys) {
        view_->steps.push_back([this, keys] { desktop_->Do("key " + keys); });
    }
    void Picture(const std::string& of) {
        view_->steps.push_back([this, of] { desktop_->Picture(of + "-" + GetParam().name); });
    }
    platform::MessageAnswer Show(const platform::Message& message) override {
        const platform::ModalScope scope(view_->windows, nullptr);
        const std::int32_t id = ++lastBox_;
        view_->Send(
            platform::MessageAsked{id, message.text, message.title, message.icon, message.buttons});
        const auto answered = [&] {
            return !view_->answers.empty() && view_->answers.back().id == id;
        };
        view_->Run(answered);
        return answered() ? view_->answers.back().answer : platform::MessageAnswer::kNo;
    }
    std::u16string Setting(const char16_t* key) {
        return scripted_.settings.texts[{u"Korvane", u"Korvane Explorer", key}];
    }

    std::unique_ptr<scripted::ScriptedHost> host_ = HostWith("=B1", R"("B1":2)");
    scripted::ScriptedPlatform scripted_{host_->sharedAccesses()};
    std::unique_ptr<Desktop> desktop_;
    std::unique_ptr<SteppedView> view_;
    std::unique_ptr<platform::Platform> services_;
    std::unique_ptr<Addin> addin_;
    std::int32_t lastBox_ = 0;
};

TEST_P(DialogLooks, Settings) {
    Picture("settings");
    Key("space");
    Key("alt+b");
    for (int k = 0; k < 7; ++k) Key("Tab");
    Key("Up");
    Picture("settings-clash");
    Key("Tab");
    Key("BackSpace");
    Key("Return");
    Picture("settings-refused");
    Key("Return");
    Key("x");
    Key("Return");
    addin_->commands().EP_Options();
    EXPECT_EQ(Setting(u"optPreciseCalc"), u"1");
    EXPECT_EQ(Setting(u"optFormulaBold"), u"1");
    EXPECT_EQ(Setting(u"optBackKey"), u"^x");
    EXPECT_EQ(lastBox_, 1);
}

TEST_P(DialogLooks, About) {
    scripted_.urls.texts[u"https://example.org/kvversion.txt"] = u"2.2";
    Picture("about");
    Key("alt+u");
    Picture("about-update");
    Key("Escape");
    Key("Return");
    addin_->commands().ShowAbout();
    ASSERT_EQ(view_->answers.size(), 1U);
    EXPECT_EQ(view_->answers[0].answer, platform::MessageAnswer::kNo);
}

INSTANTIATE_TEST_SUITE_P(All, DialogLooks,
                         ::testing::Values(Look{"light-1", "1", false}, Look{"dark-1", "1", true},
                                           Look{"light-2", "2", false}, Look{"dark-2", "2", true}),
                         [](const auto& tested) {
                             std::string name = tested.param.name;
                             name.replace(name.find('-'), 1, "_");
                             return name;
                         });

}  // namespace
}  // namespace korvane::test
