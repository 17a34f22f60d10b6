#include "bindings/view_link/view_link.h"

#include <gtest/gtest.h>

#include <random>

#include "base/error.h"
#include "bindings/view_link/linked_windows.h"

namespace korvane::view_link {
namespace {

using namespace platform;
using test::LinkedWindows;
namespace names = korvane::test;

TEST(ViewLink, AViewThatIntroducesItselfIsToldWhatThereIs) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear(false);
    all.Turn(view.get());
    EXPECT_TRUE(view->heard.empty());
    EXPECT_FALSE(all.link.IsWelcomed());
    view->Introduce();
    all.Turn(view.get());
    EXPECT_TRUE(all.link.IsWelcomed());
    all.ExpectSame(view->mirror);
    EXPECT_EQ(view->misfits, 0);
}

TEST(ViewLink, EventsReachTheModelAndChangesTheView) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    int clicks = 0;
    auto& box = all.Get<CheckBox>(names::kCheck);
    box.onClick = [&] {
        ++clicks;
        all.Get<Label>(names::kLabel).SetCaption(u"ticked");
    };
    view->Say(Event(Toggled{all.form->Id(), box.Id(), true}));
    all.Turn(view.get());
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(box.Checked());
    // The view's own doing is not told back, the label's new caption is.
    view->mirror.TryApply(PropertySet{all.form->Id(), box.Id(), Property::kChecked, true});
    all.ExpectSame(view->mirror);
    EXPECT_EQ(view->misfits, 0);
}

// A view that shows its user's doing at once, while the model writes to the same
// controls: in the end they agree.
TEST(ViewLink, ViewAndModelAgreeThoughTheirWordsCross) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    std::mt19937 random(5);
    const auto toss = [&random](int count) { return static_cast<int>(random() % count); };
    auto& box = all.Get<CheckBox>(names::kCheck);
    auto& tree = all.Get<TreeView>(names::kTree);
    const WindowId id = all.form->Id();
    for (int round = 0; round < 20'000; ++round) {
        switch (toss(8)) {
            case 0: box.SetChecked(toss(2) == 1); break;
            case 1: tree.AddNode(0, u"", u"row", {}); break;
            case 2:
                if (toss(10) == 0) tree.ClearNodes();
                break;
            case 3: {
                const bool checked = toss(2) == 1;
                view->mirror.TryApply(PropertySet{id, box.Id(), Property::kChecked, checked});
                view->Say(Event(Toggled{id, box.Id(), checked}));
                break;
            }
            case 4: {
                const auto rows = view->mirror.forms().at(id).Find(tree.Id())->nodes().size();
                if (rows == 0) break;
                const int row = toss(static_cast<int>(rows)) + 1;
                view->mirror.TryApply(PropertySet{id, tree.Id(), Property::kSelectedNode, row});
                view->Say(Event(NodeSelected{id, tree.Id(), row}));
                break;
            }
            case 5: view->Read(); break;
            default: all.link.OnReady();
        }
    }
    all.Turn(view.get());
    EXPECT_TRUE(view->mirror.forms().at(id).Find(box.Id())->Value(Property::kChecked) ==
                all.form->State().Find(box.Id())->Value(Property::kChecked));
    EXPECT_EQ(view->mirror.forms().at(id).Find(tree.Id())->nodes(),
              all.form->State().Find(tree.Id())->nodes());
}

TEST(ViewLink, ALostViewLeavesTheWindowsAndTheNextOneShowsThem) {
    LinkedWindows all(test::LongLimits());
    auto first = all.AttachNear();
    all.link.ShowStatus(u"S!A1");
    all.Get<Label>(names::kLabel).SetCaption(u"before");
    first->Leave();
    all.Turn();
    EXPECT_EQ(all.losses, std::vector<Loss>{Loss::kEnded});
    EXPECT_FALSE(all.link.HasView());
    EXPECT_LT(all.link.fd(), 0);
    EXPECT_FALSE(all.link.NextTimeout());
    all.Get<Label>(names::kLabel).SetCaption(u"between");
    all.link.OnReady();
    all.link.Flush();
    auto second = all.AttachNear();
    all.ExpectSame(second->mirror);
    EXPECT_EQ(second->Heard<StatusShown>(), std::vector<StatusShown>{{u"S!A1"}});
    EXPECT_EQ(all.link.generation(), 2);
}

TEST(ViewLink, AnotherViewMayBeStartedWhereALossIsTold) {
    LinkedWindows all(test::LongLimits());
    std::unique_ptr<test::NearView> second;
    auto first = all.AttachNear();
    all.link.onLost = [&](Loss) { second = all.AttachNear(false); };
    first->Leave();
    all.Turn();
    ASSERT_TRUE(second);
    second->Introduce();
    all.Turn(second.get());
    all.ExpectSame(second->mirror);
}

TEST(ViewLink, WindowsThatAreNoLongerShownAreNotTold) {
    ViewLink link({}, test::LongLimits());
    int ends[2] = {-1, -1};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    test::NearView view{Socket(ends[1])};
    link.Adopt(ends[0]);
    view.Introduce();
    view.Say(Event(Clicked{1, 1}));
    link.OnReady();
    ASSERT_TRUE(link.IsWelcomed());
    for (int k = 0; k < 3; ++k) {
        names::NoModalLoop loop;
        Windows windows(loop);
        const ShownWindows shown(link, windows);
        const auto form = windows.Load(names::EveryControl());
        link.OnReady();
        view.Read();
        EXPECT_EQ(view.mirror.forms().size(), 1U);
        EXPECT_EQ(windows.frame, test::SomeMetrics().frame);
        windows.forms().begin()->second->Unload();
        link.OnReady();
        view.Read();
    }
    view.Say(Event(Clicked{1, 1}));
    link.OnReady();
    EXPECT_TRUE(link.HasView());
    EXPECT_EQ(view.misfits, 0);
}

TEST(ViewLink, WithoutAProgramNoViewIsStarted) {
    LinkedWindows all(test::LongLimits());
    EXPECT_THROW(all.link.Start(), Error);
    EXPECT_THROW(all.link.EnsureView(), Error);
    EXPECT_THROW(all.form->ShowModal(), Error);
    EXPECT_FALSE(all.form->IsShown());
    LinkedWindows missing(test::LongLimits(), {"/no/such/program"});
    EXPECT_THROW(missing.link.EnsureView(), Error);
    EXPECT_FALSE(missing.link.HasView());
}

TEST(ViewLink, StoppingEndsTheViewWithoutAWord) {
    LinkedWindows all(test::LongLimits());
    auto view = all.AttachNear();
    all.Get<Label>(names::kLabel).SetCaption(u"last");
    all.link.Stop();
    EXPECT_FALSE(all.link.HasView());
    EXPECT_TRUE(all.losses.empty());
    view->Read();
    EXPECT_TRUE(view->ended);
    all.ExpectSame(view->mirror);
}

}  // namespace
}  // namespace korvane::view_link
