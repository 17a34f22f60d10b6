#include "explorer/explorer_design.h"

namespace korvane {
namespace {

using platform::ControlDesign;
using platform::ControlKind;
using platform::FormDesign;
using platform::Place;

// Twips.
constexpr float kWidth = 8400;
constexpr float kHeight = 5700;
constexpr float kMargin = 105;
constexpr float kInner = kWidth - 2 * kMargin;
constexpr float kPixel = 15;  // at the scale of the design
constexpr float kTreeHeight = 3750;
constexpr float kSplitterTop = kMargin + kTreeHeight;
constexpr float kSplitterHeight = 90;
constexpr float kFormulaTop = kSplitterTop + kSplitterHeight;
constexpr float kRowHeight = 360;
constexpr float kRowTop = kHeight - kMargin - kRowHeight;
constexpr float kFormulaHeight = kRowTop - kMargin - kFormulaTop;
constexpr float kButtonWidth = 1215;
constexpr float kEveryFunctionWidth = 1500;
constexpr float kPreciseWidth = 2550;

ControlDesign Control(ControlKind kind, const char16_t* name, const char16_t* caption,
                      const Place& place, const char16_t* tag, int tabIndex) {
    ControlDesign control;
    control.kind = kind;
    control.name = name;
    control.caption = caption;
    control.place = place;
    control.tag = tag;
    control.tabIndex = tabIndex;
    return control;
}

FormDesign Make() {
    namespace names = explorer_controls;
    FormDesign design;
    design.name = u"FExplorer";
    design.caption = u"Korvane Explorer";
    design.place = {1500, 1500, kWidth, kHeight};
    auto& controls = design.controls;
    controls.push_back(
        Control(ControlKind::kRectangle, names::kTreeFrame, u"",
                {kMargin - kPixel, kMargin - kPixel, kInner + 2 * kPixel, kTreeHeight + 2 * kPixel},
                u"WH", -1));
    controls.push_back(Control(ControlKind::kTreeView, names::kTree, u"",
                               {kMargin, kMargin, kInner, kTreeHeight}, u"WH", 0));
    controls.push_back(Control(ControlKind::kSplitter, names::kSplitter, u"",
                               {kMargin, kSplitterTop, kInner, kSplitterHeight}, u"TW", -1));
    controls.push_back(Control(ControlKind::kRichText, names::kFormula, u"",
                               {kMargin, kFormulaTop, kInner, kFormulaHeight}, u"TW", 1));
    controls.push_back(Control(ControlKind::kCheckBox, names::kEveryFunction, u"&Functions",
                               {kMargin, kRowTop, kEveryFunctionWidth, kRowHeight}, u"T", 2));
    controls.push_back(Control(
        ControlKind::kCheckBox, names::kPrecise, u"&Precise evaluation",
        {kMargin + kEveryFunctionWidth + kMargin, kRowTop, kPreciseWidth, kRowHeight}, u"T", 3));
    controls.push_back(Control(ControlKind::kButton, names::kClose, u"Close",
                               {kWidth - kMargin - kButtonWidth, kRowTop, kButtonWidth, kRowHeight},
                               u"TL", 4));
    controls.back().isCancel = true;
    return design;
}

}  // namespace

const FormDesign& ExplorerDesign() {
    static const FormDesign kDesign = Make();
    return kDesign;
}

}  // namespace korvane
