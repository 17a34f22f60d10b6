#include "support/desktop.h"
#include "support/screen_reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cctype>
#include <thread>

#include "explorer_like.h"
#include "view_under_test.h"

namespace korvane::test {
namespace {

struct Look {
    const char* name;
    const char* scale;
    bool dark;
};

class OnADesktop : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string why = Desktop::WhyNot();
        if (!why.empty()) GTEST_SKIP() << "no desktop to test on: " << why;
        desktop = std::make_unique<Desktop>();
    }
    // A view on it, with an explorer that is shown.
    void Open(const Look& look = {"", "1", false}, std::vector<std::string> more = {}) {
        auto environment = desktop->Environment();
        environment.insert(environment.end(), more.begin(), more.end());
        environment.push_back(std::string("QT_SCALE_FACTOR=") + look.scale);
        environment.emplace_back("QT_STYLE_OVERRIDE=Fusion");
        std::vector<std::string> arguments;
        if (look.dark) arguments.emplace_back("--dark");
        view = std::make_unique<ViewUnderTest>(environment, arguments);
        ASSERT_TRUE(view->TakeUntil([this] { return !view->metrics.empty(); }));
        explorer = std::make_unique<ExplorerLike>(view->windows);
        explorer->form->Show();
        ASSERT_TRUE(view->Settle());
        view->TakeUntil([] { return false; }, 300ms);
    }
    void TearDown() override {
        explorer.reset();
        view.reset();
    }
    void Do(const std::string& what) {
        desktop->Do(what);
        view->TakeUntil([] { return false; }, 150ms);
        ASSERT_TRUE(view->Settle());
    }

    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<ViewUnderTest> view;
    std::unique_ptr<ExplorerLike> explorer;
};

class Looks : public OnADesktop, public ::testing::WithParamInterface<Look> {};

TEST_P(Looks, ArePictured) {
    Open(GetParam());
    Do("key Down");
    Do("key Down");
    view->Send(platform::StatusShown{u"Selected: Sales!B2:B13"});
    Do("sleep 0.1");
    EXPECT_EQ(explorer->tree().SelectedNode(), 2);
    desktop->Picture(std::string("explorer-") + GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(All, Looks,
                         ::testing::Values(Look{"light-1", "1", false}, Look{"dark-1", "1", true},
                                           Look{"light-2", "2", false},
                                           Look{"dark-1.5", "1.5", true}),
                         [](const auto& tested) {
                             std::string name = tested.param.name;
                             for (char& ch : name) {
                                 if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
                             }
                             return name;
                         });

TEST_F(OnADesktop, TheFirstControlHasTheFocus) {
    Open();
    EXPECT_EQ(explorer->form->FocusedControl(), explorer->tree().Id());
    EXPECT_EQ(view->Told<platform::FormActivated>().size(), 1U);
    Do("key Tab");
    EXPECT_EQ(explorer->form->FocusedControl(), explorer->text().Id());
}

TEST_F(OnADesktop, AccessKeysReachTheirBoxes) {
    Open();
    view->events.clear();
    Do("key alt+f");
    EXPECT_TRUE(explorer->form->Get<platform::CheckBox>(u"chkEveryFunction").Checked());
    // The key itself is the box's business; that Alt went down is told.
    for (const auto& key : view->Told<platform::KeyDown>()) EXPECT_EQ(key.code, platform::kKeyAlt);
    Do("key alt+q");
    const auto keys = view->Told<platform::KeyDown>();
    ASSERT_FALSE(keys.empty());
    EXPECT_EQ(keys.back().code, 'Q');
    EXPECT_EQ(keys.back().shift, platform::kAlt);
}

TEST_F(OnADesktop, TheWindowStaysWhereItIs) {
    Open();
    const auto before = explorer->form->GetPlace();
    view->events.clear();
    Do("key Down");
    Do("key Tab");
    EXPECT_TRUE(view->Told<platform::FormPlaced>().empty());
    EXPECT_EQ(explorer->form->GetPlace(), before);
}

TEST_F(OnADesktop, TheCloseBoxAsks) {
    Open();
    bool byUser = false;
    explorer->form->onQueryClose = [&byUser](bool user) {
        byUser = user;
        return true;
    };
    Do("key alt+F4");
    EXPECT_TRUE(byUser);
    EXPECT_TRUE(explorer->form->IsShown());
    EXPECT_EQ(view->Told<platform::CloseAsked>().size(), 1U);
}

TEST_F(OnADesktop, EscapePressesTheCancelButton) {
    Open();
    Do("key Escape");
    EXPECT_FALSE(explorer->form->IsOpen());
}

TEST_F(OnADesktop, TheUserResizesTheWindow) {
    Open();
    const auto before = explorer->form->GetPlace();
    view->events.clear();
    const auto id = desktop->Do("search --name 'Korvane Explorer'");
    Do("windowsize " + id.substr(0, id.find('\n')) + " 800 600");
    const auto after = explorer->form->GetPlace();
    EXPECT_NE(after.width, before.width);
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.top, before.top);
    EXPECT_LE(view->Told<platform::FormPlaced>().size(), 2U);
}

TEST_F(OnADesktop, ScreenReadersFindEachRow) {
    if (const std::string why = ScreenReader::WhyNot(); !why.empty()) GTEST_SKIP() << why;
    const ScreenReader reader(*desktop);
    Open({"", "1", false}, reader.Environment());
    // The reader asks while the model's side waits: the view answers by itself.
    const std::string read = reader.Read("korvane-view");
    for (const char* line :
         {"Limit; Location: Setup!B4; Value: 40000", "SUM(Sales!B2:B13); Value: 48210",
          "check box: Functions", "check box: Precise evaluation", "Formula"}) {
        EXPECT_NE(read.find(line), std::string::npos) << line << "\n" << read;
    }
}

TEST_F(OnADesktop, ADragInTheTextSelectsIt) {
    Open();
    const auto id = desktop->Do("search --name 'Korvane Explorer'");
    ASSERT_FALSE(id.empty());
    const std::string window = id.substr(0, id.find('\n'));
    // From the end towards the start: the caret stays at the end that is held.
    Do("mousemove --window " + window + " 200 " + std::to_string(300) + " mousedown 1");
    const auto pressed = explorer->text().Selection();
    for (int x = 180; x >= 60; x -= 20) {
        Do("mousemove --window " + window + " " + std::to_string(x) + " 300");
    }
    Do("mouseup 1");
    const auto selected = explorer->text().Selection();
    EXPECT_GT(selected.length, 5);
    EXPECT_EQ(selected.start + selected.length, pressed.start);
}

TEST_F(OnADesktop, ASecondWindowOpensWhereItsPlaceSays) {
    Open();
    view->Send(platform::StatusShown{u"Selected: Sales!B2:B13"});
    ASSERT_TRUE(view->Settle());
    explorer->form.reset();
    ASSERT_TRUE(view->Settle());
    // From here on the view knows the frame, and has a line to show.
    std::vector<std::unique_ptr<ExplorerLike>> both;
    for (int k = 0; k < 2; ++k) {
        view->windows.frame = view->metrics.back().frame;
        both.push_back(std::make_unique<ExplorerLike>(view->windows));
        auto place = both.back()->form->GetPlace();
        place.left = 1500 + 3000.0F * static_cast<float>(k);
        place.top = 1500 + 3000.0F * static_cast<float>(k);
        both.back()->form->Move(place);
        view->events.clear();
        both.back()->form->Show();
        ASSERT_TRUE(view->Settle());
        view->TakeUntil([] { return false; }, 300ms);
        const auto now = both.back()->form->GetPlace();
        EXPECT_EQ(now.left, place.left) << k;
        EXPECT_EQ(now.top, place.top) << k;
        EXPECT_EQ(now.width, place.width) << k;
        EXPECT_EQ(now.height, place.height) << k;
        EXPECT_TRUE(view->Told<platform::FormPlaced>().empty()) << k;
    }
    both.clear();
}

TEST_F(OnADesktop, ARefusedShrinkLeavesTheWindowWhereItWas) {
    Open();
    auto& form = *explorer->form;
    float last = form.Width();
    form.onResize = [&] {
        // As the explorer refuses: back to what was accepted last.
        if (form.Width() < 7000) form.SetWidth(last);
        last = form.Width();
    };
    // The frame's own handle, its bottom right corner, is dragged out and then far in.
    const auto& metrics = view->metrics.back();
    const auto right = static_cast<int>((form.Left() + form.Width()) / metrics.twipsPerPixelX) - 1;
    const auto bottom = static_cast<int>((form.Top() + form.Height()) / metrics.twipsPerPixelY) - 1;
    const auto before = form.GetPlace();
    const auto to = [](int x, int y) {
        return "mousemove " + std::to_string(x) + " " + std::to_string(y);
    };
    Do(to(right, bottom) + " mousedown 1");
    for (int step = 20; step <= 200; step += 20) Do(to(right + step, bottom + step));
    EXPECT_GT(form.Width(), before.width) << "the frame was not taken hold of";
    for (int step = 200; step >= -400; step -= 50) Do(to(right + step, bottom + step));
    Do("mouseup 1");
    Do("sleep 0.3");
    EXPECT_EQ(form.Left(), before.left);
    EXPECT_EQ(form.Top(), before.top);
    EXPECT_GE(form.Width(), 7000);
    form.onResize = {};
}

TEST_F(OnADesktop, ADialogWithoutAnOwnerAppearsInTheMiddle) {
    Open();
    explorer.reset();
    auto design = ExplorerLikeDesign();
    design.centred = true;
    design.place.left = design.place.top = 0;
    const auto dialog = view->windows.Load(design);
    dialog->Show();
    ASSERT_TRUE(view->Settle());
    view->TakeUntil([] { return false; }, 300ms);
    const auto& metrics = view->metrics.back();
    const float middle = (dialog->Left() + dialog->Width() / 2) / metrics.twipsPerPixelX;
    EXPECT_NEAR(middle, 640, 20);
    EXPECT_GT(dialog->Top() / metrics.twipsPerPixelY, 100);
}

TEST_F(OnADesktop, AWindowThatIsTakenAwayIsToldAsClosed) {
    Open();
    const auto id = desktop->Do("search --name 'Korvane Explorer'");
    Do("windowclose " + id.substr(0, id.find('\n')));
    EXPECT_TRUE(view->TakeUntil([this] { return !explorer->form->IsOpen(); }));
    EXPECT_EQ(view->Told<platform::CloseAsked>().size(), 1U);
}

}  // namespace
}  // namespace korvane::test
