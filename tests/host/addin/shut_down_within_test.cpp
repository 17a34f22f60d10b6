// Shut-down while a command waits for its user, and other things that come at
// the wrong time.
#include "host/addin/busy.h"
#include "host/addin/controls.h"
#include "host/addin/entry_point.h"
#include "host/addin/running_addin.h"

namespace korvane {
namespace {

using Texts = std::vector<std::string>;

class ShutDownWithin : public test::RunningAddin {
protected:
    void ExpectGone() {
        EXPECT_FALSE(state_.IsRunning());
        EXPECT_TRUE(platform_.windows.forms().empty());
        EXPECT_EQ(host_->LiveHandles(), 0);
        EXPECT_TRUE(host_->enableEvents);
        EXPECT_TRUE(state_.hostEventsOn);
        EXPECT_EQ(OwnControls(), 0);
        EXPECT_TRUE(host_->keys.empty());
        // And the next start works.
        Open();
        main_.Explore();
        EXPECT_EQ(state_.lExplorerCount, 1);
    }
};

TEST_F(ShutDownWithin, AClickedCommand) {
    Open();
    platform_.modal.steps.push_back([this] { main_.ShutDown(); });
    Press(u"kvxOptions");
    ExpectGone();
}

TEST_F(ShutDownWithin, TheEndOfTheInstanceWithinAClickedCommand) {
    auto second = std::make_unique<CMain>(state_, commands_);
    second->AutoOpen(host_->Application(), host_->AddinWorkbook());
    platform_.modal.steps.push_back([&] { second.reset(); });
    Press(u"kvxOptions");
    EXPECT_FALSE(state_.IsRunning());
    EXPECT_EQ(host_->LiveHandles(), 0);
    EXPECT_TRUE(host_->enableEvents);
}

TEST_F(ShutDownWithin, TheUpdateChecksQuestion) {
    Open();
    windows_.onCheckUpdates = [this] { main_.ShutDown(); };
    main_.Explore();
    windows_.onCheckUpdates = {};
    ExpectGone();
}

TEST_F(ShutDownWithin, AnExploration) {
    Open();
    windows_.whileExploring = [this] { main_.ShutDown(); };
    main_.Explore();
    windows_.whileExploring = {};
    ExpectGone();
}

TEST_F(ShutDownWithin, TheBoxOfAFailure) {
    Open();
    platform_.messageBoxes.whileShown = [this](const platform::Message&) { main_.ShutDown(); };
    windows_.explores = false;
    main_.Explore();
    windows_.explores = true;
    platform_.messageBoxes.whileShown = {};
    ExpectGone();
}

TEST_F(ShutDownWithin, TheBoxOfAFailedStart) {
    accesses().FailMember("Application.Connect");
    platform_.messageBoxes.whileShown = [this](const platform::Message&) {
        accesses().FailNothing();
        // Nothing of this may find a half-made state.
        main_.Explore();
        main_.GoBack();
        main_.ShutDown();
        Open();
    };
    Open();
    platform_.messageBoxes.whileShown = {};
    ExpectGone();
}

TEST_F(ShutDownWithin, AWindowThatRefusesToClose) {
    Open();
    main_.Explore();
    platform_.windows.forms().begin()->second->onQueryClose = [](bool) { return true; };
    main_.ShutDown();
    ExpectGone();
}

TEST_F(ShutDownWithin, CommandsDoNothingWhileAFailedStartIsTold) {
    platform_.settings.texts[{u"Korvane", u"Korvane Explorer", u"optShowIcon"}] = u"yes";
    platform_.messageBoxes.whileShown = [this](const platform::Message&) {
        main_.GoBack();
        main_.Explore();
    };
    Open();
    EXPECT_EQ(Boxes(), Texts{"Type mismatch (Auto_Open)"});
    EXPECT_EQ(host_->LiveHandles(), 0);
}

TEST_F(ShutDownWithin, AFailureWhileABoxIsOpenIsAnotherChain) {
    Open();
    platform_.messageBoxes.whileShown = [this](const platform::Message&) {
        AtEntryPoint(state_.errors, u"M", u"Inner", [] { throw Error(2, u"second"); });
    };
    AtEntryPoint(state_.errors, u"M", u"Outer", [] { throw Error(1, u"first"); });
    EXPECT_EQ(Boxes(), (Texts{"first (Outer)", "second (Inner)"}));
    EXPECT_EQ(state_.errors.number(), 0);
}

TEST_F(ShutDownWithin, WhileABoxIsOpenTheUserReachesNoWindow) {
    Open();
    main_.Explore();
    const auto id = platform_.windows.forms().begin()->first;
    platform_.messageBoxes.whileShown = [&](const platform::Message&) {
        platform_.windows.Deliver(platform::CloseAsked{id, true});
    };
    host_->selectedObject = u"ChartArea";
    main_.Explore();
    EXPECT_EQ(platform_.windows.forms().size(), 1U);
}

TEST_F(ShutDownWithin, TheMenuHearsClicksAfterItsIconWasSwitchedOff) {
    Open();
    state_.options->SetbShowIcon(false);
    MControls::RemoveToolbarButtons(state_);
    EXPECT_TRUE(Press(u"kvxDocumentation"));
    EXPECT_EQ(windows_.topics.size(), 1U);
}

TEST_F(ShutDownWithin, ARestartBeginsAnew) {
    Open();
    main_.Explore();
    main_.ShutDown();
    EXPECT_TRUE(state_.shuttingDown);
    Open();
    EXPECT_FALSE(state_.shuttingDown);
    EXPECT_EQ(state_.lExplorerCount, 0);
    EXPECT_EQ(state_.history->count(), 0U);
}

// ---- order -------------------------------------------------------------------

class OrderOfSteps : public test::RunningAddin {
protected:
    // The noted accesses whose names begin with one of these, repeats left out.
    Texts Noted(const std::vector<std::string>& beginnings) {
        Texts noted;
        for (const std::string& line : accesses().log()) {
            for (const std::string& beginning : beginnings) {
                if (line.compare(0, beginning.size(), beginning) != 0) continue;
                if (noted.empty() || noted.back() != line) noted.push_back(line);
            }
        }
        return noted;
    }
};

TEST_F(OrderOfSteps, OfAnExploration) {
    Open();
    windows_.onCheckUpdates = [this] { accesses().Note("CheckUpdates"); };
    windows_.whileExploring = [this] {
        accesses().Note("bExplore");
        EXPECT_EQ(windows_.lastExplorer.lock()->hwndParent, 0) << "set before it explores";
        EXPECT_EQ(state_.history->count(), 0U);
    };
    accesses().StartLog();
    main_.Explore();
    EXPECT_EQ(Noted({"Application.Selection", "CheckUpdates", "Application.SetCursor",
                     "Application.SetEnableEvents", "Windows.Load", "Form.SetOwner", "bExplore",
                     "Form.Show", "Application.SetStatusBar"}),
              (Texts{"Application.Selection", "CheckUpdates", "Application.SetCursor",
                     "Application.SetEnableEvents", "Windows.Load", "Form.SetOwner", "bExplore",
                     "Form.Show", "Application.SetStatusBar", "Application.SetEnableEvents",
                     "Application.SetCursor"}));
}

TEST_F(OrderOfSteps, TheCellIsRememberedBeforeTheWindowIsShown) {
    Open();
    accesses().FailMember("Form.Show");
    main_.Explore();
    EXPECT_EQ(state_.history->count(), 1U);
}

TEST_F(OrderOfSteps, OfAShutDown) {
    Open();
    main_.Explore();
    accesses().StartLog();
    main_.ShutDown();
    const Texts noted = Noted({"CommandBarControl.Delete", "Windows.SetFocus", "Interior.Set"});
    // First the buttons, then the menu; the windows let their cells go after.
    EXPECT_EQ(noted, (Texts{"CommandBarControl.Delete", "Interior.SetColorIndex"}));
    EXPECT_EQ(accesses().CountOf("CommandBarControl.Delete"), 3);
}

TEST_F(OrderOfSteps, AGoBackThatFailsIsToldOnce) {
    // Anything but the host's own refusal: here a host that breaks its word.
    class Broken : public host::Application {
    public:
        explicit Broken(host::ApplicationPtr host) : host_(std::move(host)) {}
        host::RangePtr ActiveCell() override {
            if (broken) throw std::runtime_error("out of order");
            return host_->ActiveCell();
        }
        std::u16string Version() override { return host_->Version(); }
        std::u16string Caption() override { return host_->Caption(); }
        std::int64_t Hwnd() override { return host_->Hwnd(); }
        void SetStatusBar(const Value& text) override { host_->SetStatusBar(text); }
        void SetCursor(int cursor) override { host_->SetCursor(cursor); }
        void SetEnableEvents(bool enable) override { host_->SetEnableEvents(enable); }
        bool ScreenUpdating() override { return host_->ScreenUpdating(); }
        void SetScreenUpdating(bool update) override { host_->SetScreenUpdating(update); }
        int Calculation() override { return host_->Calculation(); }
        void SetCalculation(int mode) override { host_->SetCalculation(mode); }
        Value Evaluate(const std::u16string& text) override { return host_->Evaluate(text); }
        ObjectPtr Selection() override { return host_->Selection(); }
        host::CommandBarsPtr CommandBars() override { return nullptr; }
        host::WorkbookPtr ThisWorkbook() override { return host_->ThisWorkbook(); }
        void OnKey(const std::u16string& key, const std::u16string& macro) override {
            host_->OnKey(key, macro);
        }
        void OnKey(const std::u16string& key) override { host_->OnKey(key); }
        std::u16string DecimalSeparator() override { return host_->DecimalSeparator(); }
        std::u16string DateText(double serial) override { return host_->DateText(serial); }
        host::SubscriptionPtr Connect(host::ApplicationEvents& sink) override {
            return host_->Connect(sink);
        }
        bool broken = false;

    private:
        host::ApplicationPtr host_;
    };
    const auto broken = std::make_shared<Broken>(host_->Application());
    main_.AutoOpen(broken, host_->AddinWorkbook());
    EXPECT_TRUE(state_.IsRunning()) << "a host without any bars is no failure";
    main_.Explore();
    main_.GoBack();  // remembers where it went
    broken->broken = true;
    main_.GoBack();
    EXPECT_EQ(Boxes(), Texts{"out of order (bGoBack)"});
    EXPECT_NE(Log().at(0).find("]CStack.bGoBack, Error 1004: "), std::string::npos);
    EXPECT_NE(Log().at(1).find("]MEntryPoints.EP_GoBack, Error 1004: "), std::string::npos);
}

}  // namespace
}  // namespace korvane
