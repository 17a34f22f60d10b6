#include "settings/options_dialog.h"

#include "base/attempt.h"
#include "base/text.h"
#include "host/addin/controls.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"
#include "settings/key_string.h"

namespace korvane {
namespace {

using platform::Button;
using platform::CheckBox;
using platform::ComboBox;
using platform::TextBox;

constexpr const char16_t* kModule = u"FOptions";
constexpr platform::Colour kClash = platform::Rgb(255, 255, 0);

// A combo box and a text box that stand for a key string.
struct KeyBoxes {
    ComboBox& modifier;
    TextBox& letter;

    void Fill(const std::u16string& key) {
        for (const auto* item : {u"Ctrl +", u"Alt +", u"Ctrl+Alt +"}) modifier.AddItem(item);
        const KeyControls controls = ControlsOfKey(key);
        modifier.SetListIndex(controls.index);
        letter.SetText(controls.text);
    }
    std::u16string sKey() const { return sKeyOfControls({modifier.ListIndex(), letter.Text()}); }
};

KeyBoxes MainKey(const platform::Form& form) {
    return {form.Get<ComboBox>(u"cmbMainKey"), form.Get<TextBox>(u"txtMainKey")};
}

KeyBoxes BackKey(const platform::Form& form) {
    return {form.Get<ComboBox>(u"cmbBackKey"), form.Get<TextBox>(u"txtBackKey")};
}

}  // namespace

FOptions::FOptions(SharedState& state)
    : state_(state), form_(state.platform.windows.Load(OptionsDesign())) {
    ShowSettings();
    ConnectControls();
    Validate();
}

void FOptions::ShowSettings() {
    const CGlobalOptions& options = *state_.options;
    MainKey(*form_).Fill(options.sMainKey());
    BackKey(*form_).Fill(options.sBackKey());
    const auto tick = [this](const char16_t* name, bool ticked) {
        form_->Get<CheckBox>(name).SetChecked(ticked);
    };
    tick(u"chkShowIcon", options.bShowIcon());
    tick(u"chkHighlightCells", options.bHighlightCells());
    tick(u"chkFormulaColour", options.bFormulaColour());
    tick(u"chkFormulaBold", options.bFormulaBold());
    tick(u"chkFormulaUnderline", options.bFormulaUnderline());
    tick(u"chkPrecise", options.bPreciseCalc());
    if (!state_.hostHasRibbon) {
        CheckBox& icon = form_->Get<CheckBox>(u"chkShowIcon");
        icon.SetCaption(ReplaceAll(icon.Caption(), u"ribbon group", u"toolbar"));
    }
}

void FOptions::ConnectControls() {
    for (const KeyBoxes& boxes : {MainKey(*form_), BackKey(*form_)}) {
        boxes.modifier.onClick = [this] { Validate(); };
        boxes.letter.onChange = [this] { Validate(); };
    }
    form_->Get<Button>(u"cmdOK").onClick = [this] { cmdOK_Click(); };
    form_->Get<Button>(u"cmdCancel").onClick = [this] { Cancel(); };
    // The close box is the same as Cancel; the host's end is not to be stopped.
    form_->onQueryClose = [this](bool byUser) {
        if (byUser) Cancel();
        return byUser;
    };
}

std::u16string FOptions::sMainKey() const { return MainKey(*form_).sKey(); }
std::u16string FOptions::sBackKey() const { return BackKey(*form_).sKey(); }

bool FOptions::bTicked(const char16_t* name) const { return form_->Get<CheckBox>(name).Checked(); }

// The same keys for both commands cannot be; an empty one is refused by OK only.
void FOptions::Validate() {
    const TextBox& main = MainKey(*form_).letter;
    const TextBox& back = BackKey(*form_).letter;
    const bool clash = !main.Text().empty() && !back.Text().empty() && sMainKey() == sBackKey();
    form_->Get<Button>(u"cmdOK").SetEnabled(!clash);
    const platform::Colour colour = clash ? kClash : platform::kDesktopColour;
    MainKey(*form_).letter.SetBackColour(colour);
    BackKey(*form_).letter.SetBackColour(colour);
}

void FOptions::cmdOK_Click() {
    bOK_ = true;
    AtEntryPoint(state_.errors, kModule, u"cmdOK_Click", [this] {
        ChangeKeys();
        ChangeIcon();
        StoreSettings();
    });
    if (!bOK_) return;
    Suppressed([this] {
        if (state_.hostHasRibbon && state_.ribbon) state_.ribbon->InvalidateControl(u"kvx2Explore");
    });
    form_->Hide();
}

void FOptions::ChangeKeys() {
    bOK_ = state_.options->bChangeKeys(sMainKey(), sBackKey());
    if (bOK_) return;
    const std::u16string text = u"Failed to assign the keyboard shortcuts. Please try other ones.";
    state_.platform.messageBoxes.Show({text, platform::kProductName,
                                       platform::MessageIcon::kCritical,
                                       platform::MessageButtons::kOK});
    throw Error(kAlreadyReported, text);
}

void FOptions::ChangeIcon() {
    const bool wanted = bTicked(u"chkShowIcon");
    if (wanted == state_.options->bShowIcon()) return;
    state_.options->SetbShowIcon(wanted);
    MControls::RemoveToolbarButtons(state_);
    if (wanted && !MControls::bBuildCommandBars(state_)) RaiseStepFailed();
}

void FOptions::StoreSettings() {
    CGlobalOptions& options = *state_.options;
    options.SetbHighlightCells(bTicked(u"chkHighlightCells"));
    options.SetbFormulaColour(bTicked(u"chkFormulaColour"));
    options.SetbFormulaBold(bTicked(u"chkFormulaBold"));
    options.SetbFormulaUnderline(bTicked(u"chkFormulaUnderline"));
    options.SetbPreciseCalc(bTicked(u"chkPrecise"));
}

void FOptions::Cancel() {
    bOK_ = false;
    form_->Hide();
}

}  // namespace korvane
