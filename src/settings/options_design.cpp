// The settings dialog's designed layout.
#include "settings/options_dialog.h"

namespace korvane {
namespace {

using platform::ControlDesign;
using platform::ControlKind;
using platform::FormDesign;
using platform::Place;

// Twips.
constexpr float kMargin = 150;
constexpr float kWidth = 6600;
constexpr float kInner = kWidth - 2 * kMargin;
constexpr float kIndent = kMargin + 180;
constexpr float kRow = 345;

class Builder {
public:
    void Add(ControlKind kind, const char16_t* name, const char16_t* caption, const Place& place) {
        ControlDesign control;
        control.kind = kind;
        control.name = name;
        control.caption = caption;
        control.place = place;
        const bool reached = kind == ControlKind::kCheckBox || kind == ControlKind::kButton ||
                             kind == ControlKind::kTextBox || kind == ControlKind::kComboBox;
        control.tabIndex = reached ? nextTab_++ : -1;
        if (control.name == u"cmdOK") control.isDefault = true;
        if (control.name == u"cmdCancel") control.isCancel = true;
        design.controls.push_back(control);
    }
    void AddKey(const char16_t* label, const char16_t* caption, const char16_t* combo,
                const char16_t* box, float top) {
        Add(ControlKind::kLabel, label, caption, {kIndent, top + 60, 2400, kRow - 60});
        Add(ControlKind::kComboBox, combo, u"", {kIndent + 2460, top, 1500, kRow});
        Add(ControlKind::kTextBox, box, u"", {kIndent + 4050, top, 600, kRow});
    }

    FormDesign design;

private:
    int nextTab_ = 0;
};

FormDesign Make() {
    Builder build;
    build.design.name = u"FOptions";
    build.design.caption = u"Korvane Explorer Settings";
    build.design.centred = true;
    float top = kMargin;
    build.Add(ControlKind::kFrame, u"Frame2", u"Evaluation mode", {kMargin, top, kInner, 825});
    build.Add(ControlKind::kCheckBox, u"chkPrecise", u"&Precise formula evaluation (may be slow)",
              {kIndent, top + 330, kInner - 360, kRow});
    top += 825 + kMargin;
    build.Add(ControlKind::kFrame, u"Frame1", u"Oher options", {kMargin, top, kInner, 1605});
    build.Add(ControlKind::kLabel, u"Label2", u"Selected formula part:",
              {kIndent, top + 390, 2220, kRow - 60});
    build.Add(ControlKind::kCheckBox, u"chkFormulaBold", u"&Bold",
              {kIndent + 2250, top + 330, 1050, kRow});
    build.Add(ControlKind::kCheckBox, u"chkFormulaUnderline", u"&Underline",
              {kIndent + 3330, top + 330, 1350, kRow});
    build.Add(ControlKind::kCheckBox, u"chkFormulaColour", u"&Colour",
              {kIndent + 4710, top + 330, 1200, kRow});
    build.Add(ControlKind::kCheckBox, u"chkHighlightCells",
              u"&Highlight selected cells with colour", {kIndent, top + 720, kInner - 360, kRow});
    build.Add(ControlKind::kCheckBox, u"chkShowIcon",
              u"&Show icon on Formula Auditing ribbon group",
              {kIndent, top + 1110, kInner - 360, kRow});
    top += 1605 + kMargin;
    build.Add(ControlKind::kFrame, u"frmKeyBoard", u"Keyboard shortcuts",
              {kMargin, top, kInner, 1275});
    build.AddKey(u"lblKeyExplore", u"Explore active cell:", u"cmbMainKey", u"txtMainKey",
                 top + 345);
    build.AddKey(u"Label1", u"Go to last explored cell:", u"cmbBackKey", u"txtBackKey", top + 780);
    top += 1275 + kMargin;
    build.Add(ControlKind::kButton, u"cmdOK", u"OK", {kWidth - kMargin - 2580, top, 1215, 375});
    build.Add(ControlKind::kButton, u"cmdCancel", u"Cancel",
              {kWidth - kMargin - 1215, top, 1215, 375});
    build.design.place = {0, 0, kWidth, top + 375 + kMargin};
    return build.design;
}

}  // namespace

const FormDesign& OptionsDesign() {
    static const FormDesign kDesign = Make();
    return kDesign;
}

}  // namespace korvane
