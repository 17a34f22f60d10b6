// Every call fails in turn while a user works with explorer windows.
#include "explorer/explorer_fixture.h"

namespace korvane {
namespace {

using platform::Toggled;
namespace names = explorer_controls;

class ExplorerFaults : public test::ExplorerFixture {
protected:
    // The action with its first, second, … call failing until all succeed.
    template <class Action>
    void Sweep(const std::string& name, Action action) {
        constexpr int kMost = 3000;
        auto& content = host_->model().activeSheet->Find(1, 1)->content;
        const scripted::Content before = content;
        for (int nth = 1; nth < kMost; ++nth) {
            GoTo(u"A1");
            main_.Explore();
            ASSERT_EQ(platform_.windows.forms().size(), 1U) << name << nth;
            platform_.messageBoxes.shown.clear();
            platform_.files.lines.clear();
            accesses().FailNthCall(nth);
            action();
            const std::string failed = accesses().lastFailure();
            const std::string where = name + ", call " + std::to_string(nth) + " " + failed;
            accesses().FailNothing();
            EXPECT_LE(platform_.messageBoxes.shown.size(), 1U) << where;
            EXPECT_EQ(state_.errors.number(), 0) << where;
            if (failed != "Application.SetScreenUpdating") {
                EXPECT_TRUE(host_->model().screenUpdating) << where;
            }
            if (failed != "Application.SetCalculation") {
                EXPECT_EQ(host_->model().calculation, -4105) << where;
            }
            if (failed != "Application.SetEnableEvents") {
                EXPECT_TRUE(host_->enableEvents) << where;
            }
            if (failed != "Range.SetFormula") {  // it may be the restoring one
                EXPECT_EQ(content.formula, before.formula) << where;
            }
            content = before;
            ExpectTheNextActionWorks(where);
            CloseAll();
            for (const auto* cell : {u"A1", u"B1", u"C1", u"D1"}) {
                if (failed.find("Interior") == std::string::npos) {
                    EXPECT_EQ(Tint(cell), -4142) << where;
                }
                host_->RangeAt(host_->FindCells(cell).value())
                    ->Interior()
                    ->SetColorIndex(Value(-4142));
            }
            EXPECT_EQ(state_.lExplorerCount, 0) << where;
            host_->model().screenUpdating = host_->enableEvents = true;
            host_->model().calculation = -4105;
            if (failed.empty()) return;
        }
        FAIL() << name << " never succeeds";
    }
    void CloseAll() {
        while (!platform_.windows.forms().empty()) form().Unload();
    }
    void ExpectTheNextActionWorks(const std::string& where) {
        CloseAll();
        GoTo(u"A1");
        main_.Explore();
        ASSERT_EQ(platform_.windows.forms().size(), 1U) << where;
        Select(2);
        EXPECT_NE(Marked(), "") << where;
    }
};

TEST_F(ExplorerFaults, SelectingEveryRow) {
    Sweep("select", [this] {
        platform_.windows.Deliver(platform::FormActivated{form().Id()});
        for (std::int32_t node = 1; node <= tree().NodeCount(); ++node) Select(node);
    });
}

TEST_F(ExplorerFaults, PuttingTheCaretIntoTheText) {
    Sweep("caret", [this] { Deliver(names::kFormula, platform::TextSelected{0, 0, {5, 0}}); });
}

TEST_F(ExplorerFaults, ChangingBothModes) {
    Sweep("functions", [this] { Deliver(names::kEveryFunction, Toggled{0, 0, false}); });
    state_.options->SetenLastMode(1);
    Sweep("precise", [this] { Deliver(names::kPrecise, Toggled{0, 0, true}); });
}

TEST_F(ExplorerFaults, ExploringOn) {
    Sweep("explore on", [this] {
        Select(2);
        Key(names::kTree, 'Q', platform::kCtrl);
    });
}

TEST_F(ExplorerFaults, ResizingDraggingAndClosing) {
    Sweep("layout", [this] {
        Resize(9000, 6000);
        Deliver(names::kSplitter, platform::Mouse{0, 0, platform::MouseAction::kDown, 1, 0, 0, 0});
        Deliver(names::kSplitter,
                platform::Mouse{0, 0, platform::MouseAction::kMove, 1, 0, 0, 300});
        Deliver(names::kSplitter, platform::Mouse{0, 0, platform::MouseAction::kUp, 1, 0, 0, 300});
        Select(2);
        form().Unload();
    });
}

}  // namespace
}  // namespace korvane
