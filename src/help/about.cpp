#include "help/about.h"

#include <utility>

#include "base/number.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "platform/window/windows.h"

namespace korvane {
namespace {

using platform::ControlDesign;
using platform::ControlKind;
using platform::FormDesign;
using platform::Label;
using platform::TextBox;

constexpr const char16_t* kModule = u"FAbout";

ControlDesign Control(ControlKind kind, const char16_t* name, const char16_t* caption,
                      const platform::Place& place, int tabIndex = -1) {
    ControlDesign control;
    control.kind = kind;
    control.name = name;
    control.caption = caption;
    control.place = place;
    control.tabIndex = tabIndex;
    return control;
}

FormDesign Make() {
    FormDesign design;
    design.name = u"FAbout";
    design.caption = u"About Korvane Explorer";
    design.place = {0, 0, 6300, 3450};
    design.centred = true;
    auto& controls = design.controls;
    controls.push_back(
        Control(ControlKind::kLabel, u"lblTitle", u"Korvane Explorer", {1350, 240, 4650, 330}));
    controls.push_back(Control(ControlKind::kLabel, u"lblVersion", u"", {1350, 600, 4650, 285}));
    controls.push_back(Control(ControlKind::kLabel, u"lblDescription",
                               u"Add-In to Microsoft\u00ae Excel for reviewing spreadsheet "
                               u"formulae.",
                               {1350, 930, 4650, 570}));
    controls.push_back(
        Control(ControlKind::kLabel, u"lblSupport", u"Support:", {1350, 1665, 1050, 285}));
    controls.push_back(
        Control(ControlKind::kTextBox, u"txtSupport", u"", {2430, 1605, 3570, 315}, 2));
    controls.push_back(
        Control(ControlKind::kLabel, u"lbWebsite", u"Website:", {1350, 2055, 1050, 285}));
    controls.push_back(
        Control(ControlKind::kTextBox, u"txtWebsite", u"", {2430, 1995, 3570, 315}, 3));
    controls.push_back(Control(ControlKind::kButton, u"cmdCheckUpdates", u"Check for &updates",
                               {1350, 2835, 2250, 375}, 1));
    controls.push_back(Control(ControlKind::kButton, u"cmdOK", u"OK", {4785, 2835, 1215, 375}, 0));
    controls.push_back(Control(ControlKind::kPicture, u"Image1", u"", {225, 240, 900, 900}));
    for (ControlDesign& control : controls) {
        if (control.kind == ControlKind::kTextBox) control.readOnly = true;
        if (control.name == u"cmdOK") control.isDefault = control.isCancel = true;
        if (control.name == u"Image1") control.picture = u"IMGLOGO";
    }
    return design;
}

}  // namespace

const FormDesign& AboutDesign() {
    static const FormDesign kDesign = Make();
    return kDesign;
}

std::u16string sVersionText(const platform::ProductVersion& version) {
    std::u16string text =
        u"Version " + NumberText(version.major) + u"." + NumberText(version.minor);
    if (version.revision >= 1) text += u"." + NumberText(version.revision);
    return text;
}

FAbout::FAbout(SharedState& state, std::function<void()> checkUpdates)
    : state_(state), form_(state.platform.windows.Load(AboutDesign())) {
    form_->Get<Label>(u"lblVersion").SetCaption(sVersionText(state_.platform.version));
    const platform::ProductLinks& links = state_.platform.links;
    ShowLink(u"txtSupport", links.supportAddress, u"mailto:" + links.supportAddress,
             u"txtSupport_Click");
    ShowLink(u"txtWebsite", links.webSite, links.webSite, u"txtWebsite_Click");
    form_->Get<platform::Button>(u"cmdCheckUpdates").onClick = std::move(checkUpdates);
    form_->Get<platform::Button>(u"cmdOK").onClick = [this] { form_->Hide(); };
}

// The box reads as a link: all of it selected, and a hand over it.
void FAbout::ShowLink(const char16_t* name, const std::u16string& text,
                      const std::u16string& address, const char16_t* procedure) {
    TextBox& box = form_->Get<TextBox>(name);
    box.SetText(text);
    box.SetSelection({0, static_cast<std::int32_t>(text.size())});
    box.onMouseMove = [&box] { box.SetPointer(platform::Pointer::kHand); };
    if (text.empty()) return;  // nothing to open
    box.onClick = [this, address, procedure] {
        AtEntryPoint(state_.errors, kModule, procedure,
                     [&] { state_.platform.shell.Open(address, form_->Handle()); });
    };
}

}  // namespace korvane
