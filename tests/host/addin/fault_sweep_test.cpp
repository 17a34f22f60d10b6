// Every call to the host, the window system and the services fails in turn, over
// everything that a user does. Whatever fails, nothing may stay behind.
#include "host/addin/controls.h"
#include "host/addin/entry_point.h"
#include "host/addin/running_addin.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

class AddinFaults : public test::RunningAddin {
protected:
    // What must hold after every action, whether it failed or not.
    void ExpectInOrder(const std::string& where) {
        const std::string failed = accesses().lastFailure();
        if (failed != "Application.SetEnableEvents") {
            EXPECT_TRUE(host_->enableEvents) << where;
        }
        if (failed != "Application.SetScreenUpdating") {
            EXPECT_TRUE(host_->model().screenUpdating) << where;
        }
        EXPECT_LE(platform_.messageBoxes.shown.size(), 1U) << where;
        EXPECT_EQ(platform_.messageBoxes.open, 0) << where;
        ExpectOneChain(where);
        EXPECT_EQ(state_.errors.number(), 0) << where << ": a failure is still pending";
        EXPECT_EQ(static_cast<std::size_t>(state_.lExplorerCount), platform_.windows.forms().size())
            << where;
    }
    void ExpectOneChain(const std::string& where) {
        const Texts lines = Log();
        int blank = 0;
        for (const std::string& line : lines) blank += line.empty() ? 1 : 0;
        EXPECT_LE(blank, 1) << where;
        if (blank == 1) {
            EXPECT_TRUE(lines.back().empty()) << where;
        }
    }
    // Runs the action with its first, second, … call failing until all succeed;
    // `after` looks at what is left each time and puts things in order again.
    template <class Action, class After>
    void Sweep(const std::string& name, Action action, After after) {
        constexpr int kMost = 2000;
        for (int nth = 1; nth < kMost; ++nth) {
            platform_.messageBoxes.shown.clear();
            platform_.files.lines.clear();
            accesses().FailNothing();
            accesses().FailNthCall(nth);
            action();
            const std::string failed = accesses().lastFailure();
            const std::string where = name + ", call " + std::to_string(nth) + " " + failed;
            ExpectInOrder(where);
            accesses().FailNothing();
            after(where, failed);
            if (failed.empty()) return;
        }
        FAIL() << name << " never succeeds";
    }
    void CloseAll() {
        while (!platform_.windows.forms().empty()) {
            platform_.windows.forms().begin()->second->Unload();
        }
    }
};

TEST_F(AddinFaults, AStartThatFailsAtAnyStepLeavesNothing) {
    const std::string bars = host_->BarsText();
    Sweep(
        "start", [this] { Open(); },
        [&](const std::string& where, const std::string& failed) {
            if (!failed.empty() && !state_.IsRunning()) {
                EXPECT_EQ(host_->BarsText(), bars) << where;
                EXPECT_TRUE(host_->keys.empty()) << where;
                EXPECT_TRUE(host_->applicationSinks.empty()) << where;
                EXPECT_EQ(host_->LiveHandles(), 0) << where;
                EXPECT_TRUE(platform_.windows.forms().empty()) << where;
            }
            main_.ShutDown();
            Open();
            EXPECT_TRUE(state_.IsRunning()) << where << ": the next start does not work";
            main_.ShutDown();
            EXPECT_EQ(host_->BarsText(), bars) << where;
        });
}

TEST_F(AddinFaults, AShutDownLetsGoOfEverythingWhateverFails) {
    const std::string bars = host_->BarsText();
    const auto begin = [this] {
        Open();
        main_.Explore();
        main_.Explore();
    };
    begin();
    Sweep(
        "shut-down", [this] { main_.ShutDown(); },
        [&](const std::string& where, const std::string& failed) {
            EXPECT_EQ(host_->LiveHandles(), 0) << where;
            EXPECT_TRUE(host_->keys.empty()) << where;
            EXPECT_TRUE(host_->applicationSinks.empty()) << where;
            EXPECT_TRUE(platform_.windows.forms().empty()) << where;
            if (failed.empty() || failed.find("Interior") == std::string::npos) {
                EXPECT_EQ(Tint(u"A1"), -4142) << where;
            }
            if (failed.empty()) {
                EXPECT_EQ(host_->BarsText(), bars) << where;
                return;
            }
            host_->RangeAt(host_->FindCells(u"A1").value())
                ->Interior()
                ->SetColorIndex(Value(-4142));
            begin();
            EXPECT_EQ(state_.lExplorerCount, 2) << where << ": the next start does not work";
            EXPECT_EQ(OwnControls(), 6) << where;
        });
}

TEST_F(AddinFaults, AnExplorationThatFailsLeavesThingsAsTheyWere) {
    Open();
    Sweep(
        "explore", [this] { main_.Explore(); },
        [&](const std::string& where, const std::string& failed) {
            if (state_.lExplorerCount == 0 && failed != "Interior.SetColorIndex") {
                EXPECT_EQ(Tint(u"A1"), -4142) << where;
            }
            CloseAll();
            host_->RangeAt(host_->FindCells(u"A1").value())
                ->Interior()
                ->SetColorIndex(Value(-4142));
            main_.Explore();
            EXPECT_EQ(state_.lExplorerCount, 1) << where << ": the next exploration does not work";
            EXPECT_EQ(Tint(u"A1"), 33) << where;
            CloseAll();
            EXPECT_EQ(Tint(u"A1"), -4142) << where;
        });
}

TEST_F(AddinFaults, GoingBackPassesOverWhatFails) {
    Open();
    main_.Explore();
    GoTo(u"B1");
    main_.Explore();
    CloseAll();
    Sweep(
        "go back",
        [this] {
            GoTo(u"C1");
            main_.GoBack();
        },
        [&](const std::string& where, const std::string& /*failed*/) {
            EXPECT_TRUE(Boxes().empty()) << where;
            GoTo(u"C1");
            main_.GoBack();
            EXPECT_EQ(Here(), "[B.xls]S!$B$1") << where;
        });
}

TEST_F(AddinFaults, SettingsAndKeysThatFailAreNotLost) {
    Open();
    const bool icon = state_.options->bShowIcon();
    Sweep(
        "settings",
        [this] {
            AtEntryPoint(state_.errors, u"FOptions", u"cmdOK_Click", [this] {
                if (!state_.options->bChangeKeys(u"^w", u"%w")) RaiseStepFailed();
                state_.options->SetbShowIcon(false);
                MControls::RemoveToolbarButtons(state_);
                state_.options->SetbShowIcon(true);
                if (!MControls::bBuildCommandBars(state_)) RaiseStepFailed();
            });
        },
        [&](const std::string& where, const std::string& failed) {
            state_.options->SetbShowIcon(icon);
            EXPECT_TRUE(state_.options->bChangeKeys(u"^q", u"%q")) << where;
            host_->RaiseWindowActivate();
            EXPECT_EQ(host_->keys.count(u"^q"), 1U) << where;
            EXPECT_EQ(host_->keys.count(u"%q"), 1U) << where;
            if (failed.empty()) {
                EXPECT_EQ(OwnControls(), 6);
            }
            EXPECT_TRUE(MControls::bBuildCommandBars(state_)) << where;
            EXPECT_EQ(OwnControls(), 6) << where;
        });
}

TEST_F(AddinFaults, AResizeThatFailsKeepsTheWindowUsable) {
    Open();
    main_.Explore();
    platform::Form& form = *platform_.windows.forms().begin()->second;
    float width = 7000;
    Sweep(
        "resize",
        [&] {
            width += 100;
            platform_.windows.Deliver(platform::FormPlaced{form.Id(), {0, 0, width, 5000}});
        },
        [&](const std::string& where, const std::string& /*failed*/) {
            EXPECT_TRUE(Boxes().empty()) << where << ": nobody wants a box for that";
            width += 100;
            platform_.windows.Deliver(platform::FormPlaced{form.Id(), {0, 0, width, 5000}});
            EXPECT_EQ(form.Width(), width) << where;
            const platform::Control& button = *form.Controls().front();
            EXPECT_EQ(button.Left(), 4500 + (width - 6000)) << where;
        });
}

TEST_F(AddinFaults, ClicksThatFailLeaveTheButtonsAlive) {
    Open();
    const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(FindCommand(u"kvxAbout"));
    Sweep(
        "about",
        [&] {
            platform_.modal.steps.clear();
            platform_.modal.steps.push_back([this] {
                platform_.windows.Deliver(
                    platform::Clicked{platform_.windows.forms().begin()->first, 1});
            });
            bool cancelDefault = false;
            state_.controlEvents->Click(button, cancelDefault);
        },
        [&](const std::string& where, const std::string& /*failed*/) {
            EXPECT_TRUE(platform_.windows.forms().empty()) << where;
            windows_.topics.clear();
            EXPECT_TRUE(Press(u"kvxDocumentation")) << where;
            EXPECT_EQ(windows_.topics.size(), 1U) << where;
        });
}

}  // namespace
}  // namespace korvane
