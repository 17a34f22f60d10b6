// The window's life: made, filled, closed.
#include "explorer/explorer.h"

#include "base/attempt.h"
#include "explorer/explorer_design.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

namespace names = explorer_controls;

constexpr const char16_t* kModule = u"FExplorer";
constexpr float kCascade = 200;            // twips that a further window stands off
constexpr std::int32_t kColumnWidth = 96;  // pixels, until the stored widths are read
constexpr std::int32_t kEveryFunctionMode = 1;

std::u16string sNodeKey(std::size_t number) {
    std::u16string key = u"node ";
    for (const char digit : std::to_string(number)) key += static_cast<char16_t>(digit);
    return key;
}

}  // namespace

FExplorer::FExplorer(SharedState& state, Commands& commands)
    : state_(state),
      commands_(commands),
      form_(state.platform.windows.Load(ExplorerDesign())),
      trvTree_(form_->Get<platform::TreeView>(names::kTree)),
      rtbFormula_(form_->Get<platform::RichText>(names::kFormula)),
      chkEveryFunction_(form_->Get<platform::CheckBox>(names::kEveryFunction)),
      chkPrecise_(form_->Get<platform::CheckBox>(names::kPrecise)),
      cmdCancel_(form_->Get<platform::Button>(names::kClose)) {
    platform::Platform& platform = state_.platform;
    InitColumns();
    layout_ = std::make_unique<CExplorerLayout>(*form_, platform.settings, platform.screen,
                                                *state_.application, state_.errors);
    clsResizer_ =
        std::make_unique<CFormResizer>(platform.settings, platform.screen, *state_.application);
    // Before the hand-over: the stored bounds make the window resize itself.
    form_->onResize = [this] {
        if (!clsResizer_) return;  // closing
        AtEntryPoint(state_.errors, kModule, u"Form_Resize",
                     [this] { layout_->Resize(*clsResizer_); });
    };
    clsResizer_->SetForm(*form_);
    layout_->FitFirstPlace();
    layout_->SetLoaded();
    layout_->LoadColumnWidths();
    layout_->LoadSplitterPosition();
    layout_->AcceptSize();
    if (state_.lExplorerCount > 0) {
        platform::Place place = form_->GetPlace();
        place.left += kCascade;
        place.top += kCascade;
        form_->Move(place);
    }
    layout_->PlaceTreeFrame();
    openCount_ = std::make_unique<OpenCount>(state_.lExplorerCount);
    InitOptions();
    ConnectControls();
}

FExplorer::~FExplorer() { form_->Unload(); }

void FExplorer::InitColumns() {
    trvTree_.AddColumn(u"", u"Element", kColumnWidth);
    trvTree_.AddColumn(u"LOCATION", u"Location", kColumnWidth);
    trvTree_.AddColumn(u"VALUE", u"Value", kColumnWidth);
}

void FExplorer::InitOptions() {
    const BusyFlag busy(bBusy_);
    const CGlobalOptions& options = *state_.options;
    clsOptions_ = std::make_unique<CElementOptions>(*state_.application, state_.errors);
    const bool everyFunction = options.enLastMode() == kEveryFunctionMode;
    chkEveryFunction_.SetChecked(everyFunction);
    clsOptions_->bEveryFunction = everyFunction;
    clsOptions_->bPreciseCalc = options.bPreciseCalc();
    chkPrecise_.SetChecked(options.bPreciseCalc());
    chkPrecise_.SetVisible(!options.bPreciseCalc());
    clsOptions_->rngRootCell = state_.application->ActiveCell();
    clsRoot_ = std::make_unique<CElement>();
    clsSelector_ = std::make_unique<CSelector>(options, state_.hostHasRibbon, state_.tints);
}

void FExplorer::ConnectControls() {
    const auto onKeyDown = [this](std::int32_t code, std::int32_t shift) {
        OnKeyDown(code, shift);
    };
    const auto onShortcut = [this](std::int32_t code, std::int32_t shift) {
        HandleShortcutKey(code, shift);
    };
    trvTree_.onKeyDown = onKeyDown;
    rtbFormula_.onKeyDown = onKeyDown;
    chkEveryFunction_.onKeyDown = onShortcut;
    chkPrecise_.onKeyDown = onShortcut;
    cmdCancel_.onKeyDown = onShortcut;
    trvTree_.onSelect = [this] { ShowSelection(); };
    rtbFormula_.onSelChange = [this] { SelectElementAtCaret(); };
    chkEveryFunction_.onClick = [this] { ChangeEveryFunction(); };
    chkPrecise_.onClick = [this] { ChangePrecise(); };
    cmdCancel_.onClick = [this] { form_->Unload(); };
    form_->onActivate = [this] {
        bActivated_ = true;
        if (!clsResizer_) return;  // closing
        AtEntryPoint(state_.errors, kModule, u"Form_Activate",
                     [this] { layout_->Resize(*clsResizer_); });
    };
    form_->onUnload = [this] { Unload(); };
}

bool FExplorer::bExplore() {
    const bool explored = Guarded(state_.errors, kModule, u"bExplore", [this] {
        colElements_.clear();
        if (!clsRoot_->bInitRoot(*clsOptions_)) RaiseStepFailed();
        const BusyFlag busy(bBusy_);
        FillWindow();
    });
    // A failure may have left the host in manual calculation.
    if (!explored) Suppressed([this] { clsOptions_->RestoreCalc(); });
    return explored;
}

void FExplorer::FillWindow() {
    chkPrecise_.SetForeColour(platform::Rgb(0, 0, 0));
    if (clsOptions_->bMaybeImprecise) {
        chkPrecise_.SetChecked(false);
        if (clsOptions_->bContainsIndirect) chkPrecise_.SetForeColour(platform::Rgb(255, 0, 0));
    } else if (!clsOptions_->bPreciseCalc) {
        // Everything was exact anyway: the box says so, and there is no choice.
        chkPrecise_.SetChecked(true);
        chkPrecise_.SetEnabled(false);
    }
    trvTree_.ClearNodes();
    AddNode(*clsRoot_, 0);
    rtbFormula_.SetText(clsRoot_->sFormula());
}

void FExplorer::AddNode(CElement& element, std::int32_t parentNode) {
    element.sKey = sNodeKey(colElements_.size() + 1);
    colElements_.push_back(&element);
    const std::int32_t node = trvTree_.AddNode(parentNode, element.sKey, element.sName(),
                                               {element.sLocation(), element.sValue()});
    for (const CElementPtr& sub : element.colSubs()) AddNode(*sub, node);
    if (parentNode == 0) trvTree_.SetExpanded(node, true);
}

// Null when no row is selected, or one without an element.
CElement* FExplorer::SelectedElement() const {
    const auto node = static_cast<std::size_t>(trvTree_.SelectedNode());
    return node >= 1 && node <= colElements_.size() ? colElements_[node - 1] : nullptr;
}

// Every step is taken whatever becomes of the others: no failing call of the
// host keeps the window open or its cells tinted.
void FExplorer::Unload() {
    Suppressed([this] { layout_->Resize(*clsResizer_); });
    colElements_.clear();
    if (clsRoot_) clsRoot_->DeleteSubs();
    clsRoot_.reset();
    clsResizer_.reset();
    clsOptions_.reset();
    if (clsSelector_) clsSelector_->Deselect();
    clsSelector_.reset();
    openCount_.reset();
    Suppressed([this] {
        platform::Windows& windows = state_.platform.windows;
        // An opener that was closed meanwhile cannot take the focus.
        const bool openerLives = hwndParent_ != 0 && windows.FindForm(hwndParent_) != nullptr;
        windows.SetFocus(openerLives ? hwndParent_ : state_.application->Hwnd());
    });
}

}  // namespace korvane
