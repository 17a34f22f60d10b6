// Keys, and the check boxes that explore the cell anew.
#include <vector>

#include "base/attempt.h"
#include "explorer/explorer.h"
#include "host/addin/commands.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "settings/key_string.h"

namespace korvane {
namespace {

constexpr const char16_t* kModule = u"FExplorer";
constexpr const char16_t* kRootKey = u"node 1";

// The host paints again when this ends, whatever it did before: precise
// evaluation has written into the cell and put it back.
class ScreenStill {
public:
    explicit ScreenStill(host::Application& application) : application_(application) {
        Succeeds([this] { application_.SetScreenUpdating(false); });
    }
    ScreenStill(const ScreenStill&) = delete;
    ScreenStill& operator=(const ScreenStill&) = delete;
    ~ScreenStill() {
        Suppressed([this] { application_.SetScreenUpdating(true); });
    }

private:
    host::Application& application_;
};

// What of a tree is kept while its values change.
struct TreeLook {
    explicit TreeLook(const platform::TreeView& tree)
        : selectedKey(tree.SelectedKey()), scroll(tree.ScrollPosition()) {
        for (std::int32_t node = 1; node <= tree.NodeCount(); ++node) {
            expanded.push_back(tree.Expanded(node));
        }
    }
    // Nothing when the tree has another number of rows by now.
    void Restore(platform::TreeView& tree) const {
        if (static_cast<std::size_t>(tree.NodeCount()) != expanded.size()) return;
        for (std::int32_t node = 1; node <= tree.NodeCount(); ++node) {
            if (expanded[static_cast<std::size_t>(node) - 1]) tree.SetExpanded(node, true);
        }
        if (!selectedKey.empty()) tree.SelectNode(tree.FindNode(selectedKey));
        tree.SetScrollPosition(scroll);
    }

    std::vector<bool> expanded;
    std::u16string selectedKey;
    std::int32_t scroll;
};

}  // namespace

void FExplorer::OnKeyDown(std::int32_t keyCode, std::int32_t shift) {
    if (keyCode == platform::kKeyEnter && shift == 0) {
        form_->Unload();
    } else {
        HandleShortcutKey(keyCode, shift);
    }
}

// The selected part's cells are what the host has active: those are explored.
void FExplorer::HandleShortcutKey(std::int32_t keyCode, std::int32_t shift) {
    if (keyCode == platform::kKeyCtrl || keyCode == platform::kKeyAlt || shift < platform::kCtrl) {
        return;
    }
    if (!bKeyMatches(state_.options->sMainKey(), keyCode, shift)) return;
    const std::u16string key = trvTree_.SelectedKey();
    if (key.empty() || key == kRootKey) return;
    commands_.EP_Explore(form_->Handle());
}

bool FExplorer::bExploreAgain() {
    clsSelector_->SelectRange(clsRoot_->rngRange(), true);
    {
        const BusyFlag busy(bBusy_);
        chkPrecise_.SetEnabled(true);
    }
    return bExplore();
}

void FExplorer::ChangeEveryFunction() {
    if (bBusy_) return;
    AtEntryPoint(state_.errors, kModule, u"chkEveryFunction_Click", [this] {
        const bool everyFunction = chkEveryFunction_.Checked();
        clsOptions_->bEveryFunction = everyFunction;
        clsOptions_->bPreciseCalc = chkPrecise_.Enabled() && chkPrecise_.Checked();
        if (!bExploreAgain()) RaiseStepFailed();
        state_.options->SetenLastMode(everyFunction ? 1 : 0);
        trvTree_.SetFocus();
    });
}

void FExplorer::ChangePrecise() {
    if (bBusy_) return;
    AtEntryPoint(state_.errors, kModule, u"cmdPrecise_Click", [this] {
        const ScreenStill still(*state_.application);
        const TreeLook look(trvTree_);
        clsOptions_->bPreciseCalc = chkPrecise_.Checked();
        clsSelector_->SelectRange(clsRoot_->rngRange(), true);
        if (!bExplore()) RaiseStepFailed();
        look.Restore(trvTree_);
        trvTree_.SetFocus();
    });
}

}  // namespace korvane
