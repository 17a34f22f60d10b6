#include "platform/window/form.h"

#include <gtest/gtest.h>

#include <utility>

#include "base/error.h"
#include "bindings/scripted/scripted_modal.h"
#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

using test::TestWindows;

TEST(Form, HasItsDesignedControlsInOrder) {
    TestWindows test;
    const FormDesign design = test::EveryControl();
    ASSERT_EQ(test.form->Controls().size(), design.controls.size());
    for (std::size_t k = 0; k < design.controls.size(); ++k) {
        EXPECT_EQ(test.form->Controls()[k]->Name(), design.controls[k].name);
        EXPECT_EQ(test.form->Controls()[k]->Id(), static_cast<ControlId>(k) + 1);
    }
    EXPECT_THROW(test.form->Get<Control>(u"nobody"), Error);
    EXPECT_GE(test.form->Handle(), kFirstOwnHandle);
}

TEST(Form, AnotherSizeIsToldWhoeverMadeIt) {
    TestWindows test;
    std::vector<float> seen;
    test.form->onResize = [&] { seen.push_back(test.form->Width()); };
    test.form->SetWidth(7000);
    test.form->SetWidth(7000);
    Place place = test.form->GetPlace();
    place.left += 100;
    test.form->Move(place);  // no other size
    place.width = 8000;
    test.windows.Deliver(FormPlaced{test.form->Id(), place});
    EXPECT_EQ(seen, (std::vector<float>{7000, 8000}));
    EXPECT_EQ(test.form->Left(), 200);
}

TEST(Form, ASizeThatNoWindowHasIsDropped) {
    TestWindows test;
    const Place before = test.form->GetPlace();
    for (const Place& odd : {Place{0, 0, 0, 10}, Place{0, 0, 10, -1}, Place{0, 0, 1e30F, 10},
                             Place{-1e30F, 0, 10, 10}}) {
        test.windows.Deliver(FormPlaced{test.form->Id(), odd});
    }
    EXPECT_EQ(test.form->GetPlace(), before);
}

TEST(Form, UnloadAsksFirstAndRunsOnce) {
    TestWindows test;
    bool refuse = true;
    std::vector<std::string> seen;
    test.form->onQueryClose = [&](bool byUser) {
        seen.emplace_back(byUser ? "asked by the user" : "asked");
        return refuse;
    };
    test.form->onUnload = [&] {
        seen.emplace_back("unload");
        test.form->Unload();
    };
    test.form->onClosed = [&] { seen.emplace_back("closed"); };
    test.windows.Deliver(CloseAsked{test.form->Id(), true});
    EXPECT_TRUE(test.form->IsOpen());
    refuse = false;
    test.windows.Deliver(CloseAsked{test.form->Id(), false});
    EXPECT_FALSE(test.form->IsOpen());
    EXPECT_TRUE(test.form->Unload());
    EXPECT_EQ(seen, (std::vector<std::string>{"asked by the user", "asked", "unload", "closed"}));
    EXPECT_TRUE(test.windows.forms().empty());
}

TEST(Form, ClosedWhileItIsAskedItIsUnloadedOnce) {
    TestWindows test;
    int unloads = 0;
    bool asked = false;
    test.form->onQueryClose = [&](bool) {
        if (!std::exchange(asked, true)) test.form->Unload();
        return false;
    };
    test.form->onUnload = [&] { ++unloads; };
    EXPECT_TRUE(test.form->Unload());
    EXPECT_EQ(unloads, 1);
    // And where nothing of it is left behind the question.
    test.form = test.windows.Load(test::EveryControl());
    test.form->onQueryClose = [&](bool) {
        test.form.reset();
        return false;
    };
    EXPECT_TRUE(test.form->Unload());
    EXPECT_TRUE(test.windows.forms().empty());
}

TEST(Form, AnUnloadThatRaisesClosesAllTheSame) {
    TestWindows test;
    test.form->onUnload = [] { throw Error(kErrorApplication, u"no"); };
    EXPECT_THROW(test.form->Unload(), Error);
    EXPECT_FALSE(test.form->IsOpen());
}

TEST(Form, AClosedOneCanBeReadAndNothingElse) {
    TestWindows test;
    test.form->Unload();
    test.Get<RichText>(test::kRich).SetText(u"late");
    EXPECT_EQ(test.Get<RichText>(test::kRich).Text(), u"=A1+B1");
    EXPECT_EQ(test.form->HowShown(), Shown::kHidden);
}

TEST(Form, AHiddenOneHearsNoKeys) {
    TestWindows test;
    int keys = 0;
    test.Get<Control>(test::kTree).onKeyDown = [&](std::int32_t, std::int32_t) { ++keys; };
    test.form->Hide();
    test.Deliver(test::kTree, KeyDown{0, 0, 'A', 0});
    EXPECT_EQ(keys, 0);
}

class ModalForm : public testing::Test {
protected:
    scripted::ScriptedModalLoop loop_{std::make_shared<scripted::Accesses>()};
    Windows windows_{loop_};
    std::unique_ptr<Form> below_ = windows_.Load(test::EveryControl());
    std::unique_ptr<Form> dialog_ = windows_.Load(test::EveryControl());
    ControlId button_ = below_->Get<Button>(test::kButton).Id();
};

TEST_F(ModalForm, IsAllThatTheUserReachesUntilItIsHidden) {
    int below = 0;
    below_->Show();
    below_->Get<Button>(test::kButton).onClick = [&] { ++below; };
    dialog_->Get<Button>(test::kButton).onClick = [&] { dialog_->Hide(); };
    loop_.steps.push_back([&] { windows_.Deliver(Clicked{below_->Id(), button_}); });
    loop_.steps.push_back([&] { windows_.Deliver(CloseAsked{below_->Id(), true}); });
    loop_.steps.push_back([&] { windows_.Deliver(Clicked{dialog_->Id(), button_}); });
    dialog_->ShowModal();
    EXPECT_TRUE(loop_.steps.empty());
    EXPECT_FALSE(dialog_->IsShown());
    EXPECT_EQ(below, 0);
    EXPECT_TRUE(below_->IsOpen());
    windows_.Deliver(Clicked{below_->Id(), button_});
    EXPECT_EQ(below, 1);
}

TEST_F(ModalForm, EndsWhenItIsClosedOrNobodyIsThere) {
    loop_.steps.push_back([&] { windows_.Deliver(CloseAsked{dialog_->Id(), true}); });
    dialog_->ShowModal();
    EXPECT_FALSE(dialog_->IsOpen());
    const auto second = windows_.Load(test::EveryControl());
    loop_.endsWithoutSteps = true;
    second->ShowModal();
    EXPECT_FALSE(second->IsShown());
}

TEST_F(ModalForm, IsHiddenWhenTheLoopFails) {
    EXPECT_THROW(dialog_->ShowModal(), Error);  // the script has no steps
    EXPECT_FALSE(dialog_->IsShown());
    int clicks = 0;
    below_->Show();
    below_->Get<Button>(test::kButton).onClick = [&] { ++clicks; };
    windows_.Deliver(Clicked{below_->Id(), button_});
    EXPECT_EQ(clicks, 1) << "the dialog still stands in the way";
}

TEST_F(ModalForm, OpensFromAHandlerAndHearsTheUserMeanwhile) {
    below_->Show();
    std::vector<std::string> seen;
    below_->Get<Button>(test::kButton).onClick = [&] {
        seen.emplace_back("open");
        dialog_->ShowModal();
        seen.emplace_back("back");
    };
    dialog_->Get<Button>(test::kButton).onClick = [&] {
        seen.emplace_back("pressed");
        dialog_->Hide();
    };
    loop_.steps.push_back([&] { windows_.Deliver(Clicked{dialog_->Id(), button_}); });
    windows_.Deliver(Clicked{below_->Id(), button_});
    EXPECT_EQ(seen, (std::vector<std::string>{"open", "pressed", "back"}));
}

}  // namespace
}  // namespace korvane::platform
