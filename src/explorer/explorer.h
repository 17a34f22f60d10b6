// The window that shows one explored cell.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "explorer/explorer_layout.h"
#include "formula/element.h"
#include "host/addin/command_windows.h"
#include "navigation/form_resizer.h"
#include "navigation/selector.h"
#include "platform/window/form.h"

namespace korvane {

class Commands;
struct SharedState;

// A tree of the formula's parts above the formula itself. Selecting a row marks
// the part in the text and shows its cells in the workbook; putting the caret
// into the text selects the row of the smallest part there.
class FExplorer : public ExplorerWindow {
public:
    // Loads the window for the host's active cell, where the last one was left,
    // or a little off while others are open. Both references outlive it. Raises
    // when anything of it fails; nothing stays then.
    FExplorer(SharedState& state, Commands& commands);
    FExplorer(const FExplorer&) = delete;
    FExplorer& operator=(const FExplorer&) = delete;
    // Closes the window as the user does, unless he has.
    ~FExplorer() override;

    platform::Form& form() override { return *form_; }
    // The explorer window from which this one was opened, which gets the focus
    // back; 0: the host.
    void SethwndParent(std::int64_t hwnd) override { hwndParent_ = hwnd; }

    // Explores the cell and fills the window; the cell's state of calculation is
    // as before on every way out. False when that failed: it is reported, and
    // the tree holds what it got. Selects no row.
    bool bExplore() override;

private:
    // explorer.cpp
    void ConnectControls();
    void InitColumns();
    void InitOptions();
    void FillWindow();
    void AddNode(CElement& element, std::int32_t parentNode);
    CElement* SelectedElement() const;
    void Unload();

    // explorer_pane.cpp: the formula text
    void ShowSelection();
    void MarkSelection();
    void ShowCells(const CElement& element);
    void ClearMarking();
    void SelectElementAtCaret();
    const CElement* ElementAt(platform::TextSpan span) const;

    // explorer_modes.cpp: keys and check boxes
    void OnKeyDown(std::int32_t keyCode, std::int32_t shift);
    void HandleShortcutKey(std::int32_t keyCode, std::int32_t shift);
    void ChangeEveryFunction();
    void ChangePrecise();
    bool bExploreAgain();

    // Set while it lives; then as before.
    class BusyFlag {
    public:
        explicit BusyFlag(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
        BusyFlag(const BusyFlag&) = delete;
        BusyFlag& operator=(const BusyFlag&) = delete;
        ~BusyFlag() { flag_ = before_; }

    private:
        bool& flag_;
        bool before_;
    };

    SharedState& state_;
    Commands& commands_;

    // Counts this window among the open ones for as long as it is.
    class OpenCount {
    public:
        explicit OpenCount(int& count) : count_(count) { ++count_; }
        OpenCount(const OpenCount&) = delete;
        OpenCount& operator=(const OpenCount&) = delete;
        ~OpenCount() { --count_; }

    private:
        int& count_;
    };

    std::unique_ptr<CFormResizer> clsResizer_;
    std::unique_ptr<CElementOptions> clsOptions_;
    std::unique_ptr<CElement> clsRoot_;
    std::unique_ptr<CSelector> clsSelector_;
    // Every element of the tree; the one with the key "node n" is the nth.
    std::vector<CElement*> colElements_;
    bool bBusy_ = false;       // the code itself is changing controls
    bool bActivated_ = false;  // the window was seen: painting is locked while marking
    std::int64_t hwndParent_ = 0;
    std::unique_ptr<OpenCount> openCount_;

    std::unique_ptr<platform::Form> form_;
    std::unique_ptr<CExplorerLayout> layout_;
    platform::TreeView& trvTree_;
    platform::RichText& rtbFormula_;
    platform::CheckBox& chkEveryFunction_;
    platform::CheckBox& chkPrecise_;
    platform::Button& cmdCancel_;
};

}  // namespace korvane
