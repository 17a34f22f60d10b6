// The whole add-in over a scripted host and platform, driven as its host and its
// user drive it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/attempt.h"
#include "base/text.h"
#include "bindings/scripted/scripted_command_bars.h"
#include "bindings/scripted/scripted_platform.h"
#include "host/addin/command_windows.h"
#include "host/addin/entry_points.h"
#include "host/addin/main.h"
#include "host/addin/shared_state.h"
#include "navigation/form_resizer.h"
#include "navigation/selector.h"
#include "support/exploring.h"

namespace korvane::test {

inline platform::FormDesign SmallDesign(const char16_t* name) {
    platform::FormDesign design;
    design.name = name;
    design.caption = name;
    design.place = {1000, 1000, 6000, 4000};
    platform::ControlDesign button;
    button.kind = platform::ControlKind::kButton;
    button.name = u"cmdOK";
    button.place = {4500, 3500, 1000, 400};
    button.tag = u"TL";
    design.controls.push_back(button);
    return design;
}

// An explorer window that shows no formula, but tints the active cell, keeps its
// bounds and counts itself as the real one does.
class PlainExplorer : public ExplorerWindow {
public:
    explicit PlainExplorer(SharedState& state)
        : state_(state),
          resizer_(state.platform.settings, state.platform.screen, *state.application),
          selector_(*state.options, state.hostHasRibbon, state.tints),
          form_(state.platform.windows.Load(SmallDesign(u"FExplorer"))) {
        ++state_.lExplorerCount;
        form_->onResize = [this] { resizer_.FormResize(); };
        form_->onUnload = [this] {
            selector_.Deselect();
            cell_.reset();
            --state_.lExplorerCount;
        };
        resizer_.SetForm(*form_);
    }
    ~PlainExplorer() override { form_->Unload(); }
    platform::Form& form() override { return *form_; }
    void SethwndParent(std::int64_t hwnd) override { hwndParent = hwnd; }
    bool bExplore() override {
        return Guarded(state_.errors, u"FExplorer", u"bExplore", [this] {
            if (whileExploring) whileExploring();
            if (!form_->IsOpen()) return false;
            cell_ = state_.application->ActiveCell();
            selector_.SelectRange(cell_, true);
            return succeeds;
        });
    }

    std::int64_t hwndParent = -1;
    bool succeeds = true;
    std::function<void()> whileExploring;

private:
    SharedState& state_;
    CFormResizer resizer_;
    CSelector selector_;
    host::RangePtr cell_;
    std::unique_ptr<platform::Form> form_;
};

class PlainDialog : public CommandWindow {
public:
    PlainDialog(platform::Windows& windows, const char16_t* name)
        : form_(windows.Load(SmallDesign(name))) {
        form_->Get<platform::Button>(u"cmdOK").onClick = [this] { form_->Hide(); };
    }
    platform::Form& form() override { return *form_; }

private:
    std::unique_ptr<platform::Form> form_;
};

class PlainWindows : public CommandWindows {
public:
    explicit PlainWindows(SharedState& state) : state_(state) {}
    std::shared_ptr<ExplorerWindow> NewExplorer() override {
        if (makeExplorer) return makeExplorer();
        auto explorer = std::make_shared<PlainExplorer>(state_);
        explorer->succeeds = explores;
        explorer->whileExploring = whileExploring;
        lastExplorer = explorer;
        return explorer;
    }
    std::shared_ptr<CommandWindow> NewOptions() override {
        return std::make_shared<PlainDialog>(state_.platform.windows, u"FOptions");
    }
    std::shared_ptr<CommandWindow> NewAbout() override {
        return std::make_shared<PlainDialog>(state_.platform.windows, u"FAbout");
    }
    void ShowHelp(std::int32_t topic) override { topics.push_back(topic); }
    void CheckUpdates(bool bManual) override {
        checks.push_back(bManual);
        if (onCheckUpdates) onCheckUpdates();
    }

    // Makes other explorers than plain ones.
    std::function<std::shared_ptr<ExplorerWindow>()> makeExplorer;
    // Run within the update check, and within an exploration.
    std::function<void()> onCheckUpdates;
    std::function<void()> whileExploring;
    bool explores = true;
    std::weak_ptr<PlainExplorer> lastExplorer;
    std::vector<std::int32_t> topics;
    std::vector<bool> checks;

private:
    SharedState& state_;
};

class RunningAddin : public testing::Test {
protected:
    RunningAddin() : RunningAddin(HostWith("=B1", R"("B1":2,"C1":3)")) {}
    explicit RunningAddin(std::unique_ptr<scripted::ScriptedHost> host) : host_(std::move(host)) {
        host_->thisWorkbookName = u"KorvaneExplorer.xla";
        host_->thisWorkbookPath = u"C:\\Add-ins";
        platform_.screen.windows[7] = {host_->caption, {0, 0, 800, 600}};
        host_->hwnd = 7;
        platform_.clock.now = {2026, 11, 16, 1, 10, 30};
    }
    ~RunningAddin() override {
        main_.ShutDown();
        state_.ribbon.reset();
        EXPECT_EQ(host_->LiveHandles(), 0);
        EXPECT_TRUE(platform_.windows.forms().empty());
    }

    void Open() { main_.AutoOpen(host_->Application(), host_->AddinWorkbook()); }

    // What the user presses: the first button with this command; false when
    // there is none. Says whether the host is to do nothing else.
    bool Press(const char16_t* command) {
        bool cancelDefault = false;
        if (const auto control = FindCommand(command)) host_->RaiseClick(control, cancelDefault);
        return cancelDefault;
    }
    host::CommandBarControlPtr FindCommand(const std::u16string& command) {
        const auto bars = host_->Application()->CommandBars();
        for (const auto* name : {u"Worksheet Menu Bar", u"Formula Auditing"}) {
            if (auto found = Find(*bars->Item(name)->Controls(), command)) return found;
        }
        return nullptr;
    }
    // How many controls of the system there are, submenus with its caption
    // included.
    int OwnControls() const {
        int count = 0;
        host_->bars()->Walk([&count](scripted::ControlData& control, int /*depth*/) {
            if (control.tag == u"kvxButton" || control.caption == u"Korvane E&xplorer") ++count;
        });
        return count;
    }
    std::string Here() {
        return ToUtf8(host_->Application()->ActiveCell()->Address(host::kExternal));
    }
    void GoTo(const char16_t* reference) {
        const auto cells = host_->FindCells(reference).value();
        host_->model().activeBook = cells.book;
        host_->model().activeSheet = cells.sheet;
        host_->model().activeCell = host_->selection = cells.area;
    }
    int Tint(const char16_t* reference) {
        const auto index = host_->RangeAt(host_->FindCells(reference).value())->Interior();
        return static_cast<int>(*index->ColorIndex().Number());
    }
    std::vector<std::string> Log(const char16_t* path = u"C:\\Add-ins\\Error.log") {
        std::vector<std::string> lines;
        for (const auto& line : platform_.files.lines[path]) lines.push_back(ToUtf8(line));
        return lines;
    }
    std::vector<std::string> Boxes() const {
        std::vector<std::string> texts;
        for (const auto& box : platform_.messageBoxes.shown) texts.push_back(ToUtf8(box.text));
        return texts;
    }
    scripted::Accesses& accesses() { return host_->accesses(); }

    std::unique_ptr<scripted::ScriptedHost> host_;
    scripted::ScriptedPlatform platform_{host_->sharedAccesses()};
    SharedState state_{platform_.Services()};
    PlainWindows windows_{state_};
    MEntryPoints commands_{state_, windows_};
    CMain main_{state_, commands_};

private:
    host::CommandBarControlPtr Find(host::CommandBarControls& controls,
                                    const std::u16string& command) {
        for (int k = 1; k <= controls.Count(); ++k) {
            auto control = controls.Item(k);
            if (control->Parameter() == command) return control;
            if (control->TypeName() != u"CommandBarPopup") continue;
            if (auto found = Find(*control->Controls(), command)) return found;
        }
        return nullptr;
    }
};

}  // namespace korvane::test
