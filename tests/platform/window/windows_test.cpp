#include "platform/window/windows.h"

#include <gtest/gtest.h>

#include <cstring>

#include "base/error.h"
#include "bindings/scripted/scripted_modal.h"
#include "platform/window/random_messages.h"
#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

using test::TestWindows;

// Whether a copy holds exactly what the windows hold.
void ExpectSame(const WindowsMirror& mirror, const Windows& windows) {
    ASSERT_EQ(mirror.forms().size(), windows.forms().size());
    for (const auto& [id, form] : windows.forms()) {
        ASSERT_TRUE(mirror.forms().at(id) == form->State()) << "window " << id;
    }
}

TEST(Windows, HandlesAreNeverUsedAgain) {
    test::NoModalLoop loop;
    Windows windows(loop);
    auto first = windows.Load(test::EveryControl());
    const auto handle = first->Handle();
    EXPECT_EQ(windows.FindForm(handle), first.get());
    first.reset();
    EXPECT_EQ(windows.FindForm(handle), nullptr);
    EXPECT_NE(windows.Load(test::EveryControl())->Handle(), handle);
}

TEST(Windows, EventsForWindowsThatAreGoneAreDropped) {
    TestWindows test;
    test.windows.Deliver(Clicked{99, 1});
    test.windows.Deliver(KeyDown{test.form->Id(), 99, 13, 0});
    test.windows.Deliver(KeyDown{test.form->Id(), -1, 13, 0});
    test.windows.Deliver(KeyDown{test.form->Id(), 0, 13, 0});
}

TEST(Windows, AnEventThatComesWithinAHandlerWaits) {
    TestWindows test;
    std::vector<std::string> seen;
    test.Get<Button>(test::kButton).onClick = [&] {
        seen.emplace_back("begin");
        test.Deliver(test::kCheck, Toggled{0, 0, true});
        seen.emplace_back("end");
    };
    test.Get<CheckBox>(test::kCheck).onClick = [&] { seen.emplace_back("check"); };
    test.Deliver(test::kButton, Clicked());
    EXPECT_EQ(seen, (std::vector<std::string>{"begin", "end", "check"}));
}

TEST(Windows, AHandlerThatRaisesLeavesTheNextOneItsTurn) {
    TestWindows test;
    int clicks = 0;
    test.Get<Button>(test::kButton).onClick = [&] {
        if (++clicks == 1) throw Error(kErrorApplication, u"no");
    };
    EXPECT_THROW(test.Deliver(test::kButton, Clicked()), Error);
    test.Deliver(test::kButton, Clicked());
    EXPECT_EQ(clicks, 2);
}

TEST(Windows, WhatOwnsAWindowMayLetGoOfItFromItsHandler) {
    TestWindows test;
    std::shared_ptr<Form> owner = std::move(test.form);
    Button& button = owner->Get<Button>(test::kButton);
    const std::weak_ptr<Form> watch = owner;
    bool stillThere = false;
    button.onClick = [&] {
        owner->Unload();
        test.windows.LetGoLater(std::exchange(owner, nullptr));
        stillThere = !watch.expired();
    };
    test.windows.Deliver(Clicked{owner->Id(), button.Id()});
    EXPECT_TRUE(stillThere);
    EXPECT_TRUE(watch.expired());
}

TEST(Windows, AMessageBoxKeepsTheUserFromEveryWindow) {
    TestWindows test;
    int clicks = 0;
    test.Get<Button>(test::kButton).onClick = [&clicks] { ++clicks; };
    {
        const ModalScope box(test.windows, nullptr);
        test.Deliver(test::kButton, Clicked());
        EXPECT_EQ(clicks, 0);
    }
    test.Deliver(test::kButton, Clicked());
    EXPECT_EQ(clicks, 1);
}

TEST(Windows, ARefusedCallDoesNothing) {
    TestWindows test;
    test.windows.onCall = [](const char* member) {
        throw Error(kErrorApplication, std::u16string(member, member + strlen(member)));
    };
    EXPECT_THROW(test.windows.Load(test::EveryControl()), Error);
    EXPECT_EQ(test.windows.forms().size(), 1U);
    EXPECT_THROW(test.form->SetOwner(5), Error);
    EXPECT_EQ(test.form->Owner(), 0);
    test.form->Hide();
    EXPECT_THROW(test.form->Show(), Error);
    EXPECT_THROW(test.form->ShowModal(), Error);
    EXPECT_FALSE(test.form->IsShown());
    EXPECT_THROW(test.windows.LockUpdates(test.form.get()), Error);
    EXPECT_THROW(test.windows.SetFocus(1), Error);
}

TEST(Windows, OneWindowAtATimeIsKeptFromPainting) {
    TestWindows test;
    const auto second = test.windows.Load(test::EveryControl());
    const auto locked = [](const Form& form) {
        return form.State().self.Get<bool>(Property::kUpdatesLocked);
    };
    test.windows.LockUpdates(test.form.get());
    test.windows.LockUpdates(second.get());
    EXPECT_FALSE(locked(*test.form));
    EXPECT_TRUE(locked(*second));
    test.windows.LockUpdates(nullptr);
    EXPECT_FALSE(locked(*second));
    // A lock ends whatever the window system says.
    test.windows.LockUpdates(test.form.get());
    test.windows.onCall = [](const char*) { throw Error(kErrorApplication, u"refused"); };
    EXPECT_THROW(test.windows.LockUpdates(nullptr), Error);
    EXPECT_FALSE(locked(*test.form));
}

TEST(Windows, AViewIsNotToldItsOwnDoing) {
    class Counting : public View {
    public:
        void Apply(const Change& change) override { changes.push_back(change); }
        std::vector<Change> changes;
    };
    TestWindows test;
    Counting one;
    Counting other;
    test.windows.Attach(one);
    test.windows.Attach(other);
    one.changes.clear();
    other.changes.clear();
    CheckBox& box = test.Get<CheckBox>(test::kCheck);
    box.onClick = [&] { test.Get<Label>(test::kLabel).SetCaption(u"seen"); };
    test.windows.Deliver(Toggled{test.form->Id(), box.Id(), true}, &one);
    EXPECT_EQ(one.changes.size(), 1U);  // the caption
    EXPECT_EQ(other.changes.size(), 2U);
    // What the system takes back is told to everyone.
    box.onClick = [&] { box.SetChecked(true); };
    test.windows.Deliver(Toggled{test.form->Id(), box.Id(), false}, &one);
    EXPECT_EQ(one.changes.size(), 2U);
    test.windows.Detach(one);
    test.windows.Detach(other);
}

TEST(Windows, WhatIsNotTakenIsTakenBackInTheView) {
    TestWindows test;
    WindowsMirror view;
    test.windows.Attach(view);
    CheckBox& box = test.Get<CheckBox>(test::kCheck);
    TextBox& text = test.Get<TextBox>(test::kBox);
    text.SetText(u"kept");
    box.SetEnabled(false);
    text.SetEnabled(false);
    // The view shows its user's doing at once.
    const WindowId id = test.form->Id();
    view.Apply(PropertySet{id, box.Id(), Property::kChecked, true});
    test.windows.Deliver(Toggled{id, box.Id(), true}, &view);
    view.Apply(PropertySet{id, text.Id(), Property::kText, std::u16string(u"typed")});
    test.windows.Deliver(TextEdited{id, text.Id(), u"typed"}, &view);
    const ModalScope messageBox(test.windows, nullptr);
    TreeView& tree = test.Get<TreeView>(test::kTree);
    view.Apply(PropertySet{id, tree.Id(), Property::kSelectedNode, 2});
    test.windows.Deliver(NodeSelected{id, tree.Id(), 2}, &view);
    view.Apply(NodeExpanded{id, tree.Id(), 1, true});
    test.windows.Deliver(NodeToggled{id, tree.Id(), 1, true}, &view);
    ExpectSame(view, test.windows);
    test.windows.Detach(view);
}

TEST(Windows, EventsFromBeforeAModalWaitAreTakenAfterIt) {
    scripted::ScriptedModalLoop loop(std::make_shared<scripted::Accesses>());
    Windows windows(loop);
    const auto form = windows.Load(test::EveryControl());
    const auto dialog = windows.Load(test::EveryControl());
    form->Show();
    const ControlId check = form->Get<CheckBox>(test::kCheck).Id();
    Button& button = form->Get<Button>(test::kButton);
    std::vector<std::string> seen;
    form->Get<CheckBox>(test::kCheck).onClick = [&] { seen.emplace_back("check"); };
    button.onClick = [&] {
        windows.Deliver(Toggled{form->Id(), check, true});
        loop.steps.push_back([&] { dialog->Hide(); });
        dialog->ShowModal();
        seen.emplace_back("closed");
    };
    windows.Deliver(Clicked{form->Id(), button.Id()});
    EXPECT_EQ(seen, (std::vector<std::string>{"closed", "check"}));
}

TEST(Windows, AViewMayGoWhileItIsTold) {
    class Leaving : public View {
    public:
        explicit Leaving(Windows& windows) : windows_(windows) {}
        void Apply(const Change& /*change*/) override {
            ++told;
            windows_.Detach(*this);
        }
        int told = 0;

    private:
        Windows& windows_;
    };
    TestWindows test;
    test.form->Hide();
    class Counting : public View {
    public:
        void Apply(const Change& /*change*/) override { ++told; }
        int told = 0;
    };
    test::NoModalLoop loop;
    Windows windows(loop);
    Leaving first(windows);
    Counting second;
    windows.Attach(first);
    windows.Attach(second);
    const auto form = windows.Load(test::EveryControl());
    form->Show();
    EXPECT_EQ(first.told, 1);
    EXPECT_EQ(second.told, 2);
    windows.Detach(second);
}

TEST(Windows, ALateViewKnowsWhoHasTheFocus) {
    TestWindows test;
    test.windows.SetFocus(7);
    WindowsMirror late;
    test.windows.Attach(late);
    EXPECT_EQ(late.focused(), 7);
    test.windows.Detach(late);
}

// Whatever users and the system do, a view that was there from the beginning and
// one that came later hold the same as the windows.
TEST(Windows, CopiesNeverDiffer) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        test::RandomMessages random(seed);
        TestWindows test;
        WindowsMirror always;
        test.windows.Attach(always);
        auto second = test.windows.Load(test::EveryControl());
        second->Show();
        TreeView& tree = test.Get<TreeView>(test::kTree);
        RichText& pane = test.Get<RichText>(test::kRich);
        tree.onSelect = [&] {
            pane.SetSelection({0, 99});
            pane.SetSelBold(false);
            pane.SetSelection({tree.SelectedNode(), 2});
            pane.SetSelBold(true);
            pane.SetSelColour(tree.SelectedNode());
        };
        for (int k = 0; k < 2000; ++k) {
            Event event = random.NextEvent();
            std::visit(
                [&](auto& what) {
                    what.window = random.Below(3) + 1;
                    if constexpr (requires { what.control; }) what.control = random.Below(13);
                },
                event);
            test.windows.Deliver(event);
            if (k % 50 == 0) tree.AddNode(random.Below(tree.NodeCount() + 1), u"k", u"t", {});
            if (k % 500 == 0) tree.ClearNodes();
            if (k % 700 == 0) pane.SetText(u"=SUM(A1,B1)*2");
        }
        ExpectSame(always, test.windows);
        WindowsMirror late;
        test.windows.Attach(late);
        ExpectSame(late, test.windows);
        test.windows.Detach(late);
        test.windows.Detach(always);
    }
}

}  // namespace
}  // namespace korvane::platform
