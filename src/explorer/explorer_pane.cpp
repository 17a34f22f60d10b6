// The formula text: marking the selected part, and finding the part at the
// caret.
#include "base/attempt.h"
#include "explorer/explorer.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

// Keeps the window from painting, where it was seen already.
class UpdateLock {
public:
    UpdateLock(platform::Windows& windows, platform::Form& form, bool wanted)
        : windows_(windows), locked_(wanted && Succeeds([&] { windows.LockUpdates(&form); })) {}
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;
    ~UpdateLock() {
        if (locked_) Suppressed([this] { windows_.LockUpdates(nullptr); });
    }

private:
    platform::Windows& windows_;
    bool locked_;
};

}  // namespace

void FExplorer::ShowSelection() {
    if (bBusy_) return;
    // The name under which this failure has always been known in the log.
    AtEntryPoint(state_.errors, u"FExplorer", u"cmdPrecise_Click", [this] {
        const BusyFlag busy(bBusy_);
        const UpdateLock lock(state_.platform.windows, *form_, bActivated_);
        ClearMarking();
        if (const CElement* element = SelectedElement()) {
            ShowCells(*element);
            if (!element->bIsRoot()) MarkSelection();
        }
    });
}

void FExplorer::ClearMarking() {
    rtbFormula_.SetSelection({0, static_cast<std::int32_t>(rtbFormula_.Text().size())});
    rtbFormula_.SetSelBold(false);
    rtbFormula_.SetSelUnderline(false);
    rtbFormula_.SetSelColour(platform::Rgb(0, 0, 0));
    rtbFormula_.SetSelLength(0);
}

void FExplorer::ShowCells(const CElement& element) {
    if (element.rngRange()) {
        clsSelector_->SelectRange(element.rngRange(), true);
        return;
    }
    // Where nothing is open any more there is no active cell to keep selected.
    host::RangePtr active;
    Succeeds([&] { active = state_.application->ActiveCell(); });
    clsSelector_->SelectRange(active, false);
}

// The caret stays at the start of the part; the marking alone shows it.
void FExplorer::MarkSelection() {
    const CElement& element = *SelectedElement();
    const CGlobalOptions& options = *state_.options;
    rtbFormula_.SetSelStart(element.lRootPosition() - 1);
    rtbFormula_.SetSelLength(element.lLength());
    if (options.bFormulaBold()) rtbFormula_.SetSelBold(true);
    if (options.bFormulaUnderline()) rtbFormula_.SetSelUnderline(true);
    if (options.bFormulaColour()) rtbFormula_.SetSelColour(platform::Rgb(0, 0, 255));
    rtbFormula_.SetSelLength(0);
}

void FExplorer::SelectElementAtCaret() {
    if (bBusy_) return;
    AtEntryPoint(state_.errors, u"FExplorer", u"rtbFormula_SelChange", [this] {
        const platform::TextSpan span = rtbFormula_.Selection();
        // Selecting the row runs ShowSelection, which is to do its work.
        if (const CElement* element = ElementAt(span)) {
            trvTree_.SelectNode(trvTree_.FindNode(element->sKey));
        }
        const BusyFlag busy(bBusy_);
        rtbFormula_.SetSelection(span);
    });
}

// The smallest element around the span; of equally long ones the outermost. Null
// when only the root is around it.
const CElement* FExplorer::ElementAt(platform::TextSpan span) const {
    if (colElements_.empty()) return nullptr;
    if (span.start == 0 && span.length == 0) return colElements_.front();
    const auto size = static_cast<std::int32_t>(rtbFormula_.Text().size());
    if (span.length == 0 && colElements_.size() >= 2 && span.start == size) {
        return colElements_.back();
    }
    const CElement* smallest = nullptr;
    for (std::size_t k = 1; k < colElements_.size(); ++k) {
        const CElement& element = *colElements_[k];
        const std::int32_t start = element.lRootPosition() - 1;
        const bool contains =
            start <= span.start && start + element.lLength() >= span.start + span.length;
        if (contains && (!smallest || element.lLength() < smallest->lLength())) {
            smallest = &element;
        }
    }
    return smallest;
}

}  // namespace korvane
