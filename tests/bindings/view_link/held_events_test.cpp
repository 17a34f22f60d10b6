#include "bindings/view_link/held_events.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/view_link/linked_windows.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using test::LinkedWindows;
namespace names = korvane::test;

// A host that has no time for its user's doing, or has.
struct BusyHost : LinkedWindows {
    BusyHost() : LinkedWindows(test::LongLimits()) {
        for (const char16_t* row : {u"a", u"b", u"c"}) tree.AddNode(0, row, row, {});
        tree.onSelect = [this] { done += "row " + std::to_string(tree.SelectedNode()) + " "; };
        box.onClick = [this] { done += box.Checked() ? "tick " : "untick "; };
        form->onQueryClose = [this](bool) {
            done += "close ";
            return true;
        };
        link.whyHeld = [this] { return why; };
        Turn(view.get());
    }
    void Select(std::int32_t row) {
        view->mirror.TryApply(PropertySet{form->Id(), tree.Id(), Property::kSelectedNode, row});
        view->Say(Event(NodeSelected{form->Id(), tree.Id(), row}));
    }
    void Tick(bool ticked) {
        view->mirror.TryApply(PropertySet{form->Id(), box.Id(), Property::kChecked, ticked});
        view->Say(Event(Toggled{form->Id(), box.Id(), ticked}));
    }
    // Turns until the view has heard nothing new for a while; the status that it shows.
    std::u16string Status() {
        for (int k = 0; k < 20; ++k) Turn(view.get());
        const auto statuses = view->Heard<StatusShown>();
        return statuses.empty() ? u"" : statuses.back().text;
    }

    std::unique_ptr<test::NearView> view = AttachNear();
    TreeView& tree = Get<TreeView>(names::kTree);
    CheckBox& box = Get<CheckBox>(names::kCheck);
    std::u16string why;
    std::string done;
};

TEST(HeldEvents, WhatTheUserDoesMeanwhileIsDoneAfterwardsInItsOrder) {
    BusyHost host;
    host.link.ShowStatus(u"Selected: A1");
    host.why = u"Finish first.";
    host.Select(2);
    host.Tick(true);
    host.Select(3);
    host.view->Say(Event(CloseAsked{host.form->Id(), true}));
    EXPECT_EQ(host.Status(), u"Finish first.");
    EXPECT_EQ(host.done, "");
    host.why = u"Close it first.";
    EXPECT_EQ(host.Status(), u"Close it first.");
    host.why.clear();
    EXPECT_EQ(host.Status(), u"Selected: A1");
    EXPECT_EQ(host.done, "row 2 tick row 3 close ");
    host.Select(1);
    EXPECT_EQ(host.Status(), u"Selected: A1");
    EXPECT_EQ(host.done, "row 2 tick row 3 close row 1 ");
    host.ExpectSame(host.view->mirror);
    EXPECT_EQ(host.view->misfits, 0);
}

// Nobody has to do anything for it to go on.
TEST(HeldEvents, TheLinkLooksAgainSoon) {
    BusyHost host;
    host.why = u"Finish first.";
    host.Select(2);
    host.Turn(host.view.get());
    ASSERT_TRUE(host.link.NextTimeout());
    EXPECT_LE(*host.link.NextTimeout(), std::chrono::milliseconds(100));
    host.why.clear();
    EXPECT_TRUE(host.PumpUntil([&] { return !host.done.empty(); }));
}

TEST(HeldEvents, WindowsCanStillBeMovedAndLookedThrough) {
    BusyHost host;
    host.why = u"Finish first.";
    const Place place{700, 800, 5000, 3000};
    host.view->Say(Event(FormPlaced{host.form->Id(), place}));
    host.view->Say(Event(Scrolled{host.form->Id(), host.tree.Id(), 12}));
    EXPECT_EQ(host.Status(), u"");
    EXPECT_EQ(host.form->GetPlace(), place);
    EXPECT_EQ(host.tree.ScrollPosition(), 12);
}

// One held step changes what the next one is about: the view is told what became of it.
TEST(HeldEvents, WhatIsRefusedInTheEndIsTakenBackInTheView) {
    BusyHost host;
    host.tree.onSelect = [&host] { host.box.SetEnabled(false); };
    host.why = u"Finish first.";
    host.Select(2);
    host.Tick(true);
    host.Status();
    host.why.clear();
    host.Status();
    EXPECT_EQ(host.done, "");
    EXPECT_FALSE(host.box.Checked());
    host.ExpectSame(host.view->mirror);
}

TEST(HeldEvents, AStepThatMakesTheHostBusyHoldsTheRest) {
    BusyHost host;
    host.box.onClick = [&host] {
        host.done += "tick ";
        host.why = u"Close it first.";
    };
    host.why = u"Finish first.";
    host.Tick(true);
    host.Select(2);
    host.Status();
    host.why.clear();
    EXPECT_EQ(host.Status(), u"Close it first.");
    EXPECT_EQ(host.done, "tick ");
    host.why.clear();
    EXPECT_EQ(host.Status(), u"");
    EXPECT_EQ(host.done, "tick row 2 ");
}

TEST(HeldEvents, WindowsThatWaitForAnAnswerGoOn) {
    BusyHost host;
    host.Select(2);
    host.Turn(host.view.get());
    const auto dialog = host.windows.Load(names::EveryControl());
    auto& ok = dialog->Get<Button>(names::kButton);
    ok.onClick = [&dialog] { dialog->Hide(); };
    host.why = u"Finish first.";
    host.Select(3);  // before the dialog comes
    host.Turn(host.view.get());
    host.view->Say(Event(Clicked{dialog->Id(), ok.Id()}));
    dialog->ShowModal();
    EXPECT_FALSE(dialog->IsShown());
    EXPECT_EQ(host.done, "row 2 ");
    host.why.clear();
    host.Status();
    EXPECT_EQ(host.done, "row 2 row 3 ");
}

TEST(HeldEvents, NothingIsReleasedWhileAWindowWaits) {
    BusyHost host;
    host.why = u"Finish first.";
    host.Select(3);
    host.Turn(host.view.get());
    host.why.clear();
    {
        const ModalScope box(host.windows, nullptr);
        host.Status();
        EXPECT_EQ(host.done, "");
    }
    host.Status();
    EXPECT_EQ(host.done, "row 3 ");
}

TEST(HeldEvents, AViewThatGoesTakesThemWithIt) {
    BusyHost host;
    host.why = u"Finish first.";
    host.Select(2);
    EXPECT_EQ(host.Status(), u"Finish first.");
    host.view->Leave();
    ASSERT_TRUE(host.PumpUntil([&] { return !host.losses.empty(); }));
    host.why.clear();
    host.view = host.AttachNear();
    EXPECT_EQ(host.Status(), u"");
    EXPECT_EQ(host.done, "");
    EXPECT_EQ(host.tree.SelectedNode(), 0);
    host.ExpectSame(host.view->mirror);
}

TEST(HeldEvents, AViewThatNeverStopsIsGivenUp) {
    BusyHost host;
    host.why = u"Finish first.";
    for (int k = 0; k < 20'000 && host.losses.empty(); ++k) {
        host.view->Say(Event(NodeSelected{host.form->Id(), host.tree.Id(), 1 + k % 3}));
        if (k % 100 == 0) host.Turn();
    }
    ASSERT_TRUE(host.PumpUntil([&] { return !host.losses.empty(); }));
    EXPECT_EQ(host.losses, std::vector{Loss::kGarbage});
    EXPECT_EQ(host.done, "");
}

TEST(HeldEvents, TheMouseMayMoveForLong) {
    HeldEvents held;
    Mouse move{1, 2, MouseAction::kMove, kLeftButton, 0, 0, 0};
    for (int k = 0; k < 100'000; ++k) {
        move.x = static_cast<float>(k);
        ASSERT_TRUE(held.Add(move));
    }
    ASSERT_TRUE(held.Add(Mouse{1, 2, MouseAction::kUp, kLeftButton, 0, 5, 0}));
    EXPECT_EQ(held.Take(), Event(move));
    EXPECT_EQ(std::get<Mouse>(held.Take()).action, MouseAction::kUp);
    EXPECT_TRUE(held.empty());
}

TEST(HeldEvents, TheWindowThatIsActedInIsKnown) {
    BusyHost host;
    std::vector<WindowId> acting;
    host.tree.onSelect = [&] { acting.push_back(host.link.acting()); };
    host.Select(1);
    host.Status();
    host.why = u"Finish first.";
    host.Select(2);
    host.Status();
    host.why.clear();
    host.Status();
    EXPECT_EQ(acting, std::vector(2, host.form->Id()));
    EXPECT_EQ(host.link.acting(), 0);
}

}  // namespace
}  // namespace korvane::view_link
