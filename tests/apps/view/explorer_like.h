// A window like the explorer's, filled.
#pragma once

#include "platform/window/windows.h"

namespace korvane::test {

inline platform::FormDesign ExplorerLikeDesign() {
    using platform::ControlDesign;
    using platform::ControlKind;
    platform::FormDesign design;
    design.name = u"FExplorer";
    design.caption = u"Korvane Explorer";
    design.place = {1500, 1500, 8400, 5700};
    const auto add = [&design](ControlKind kind, const char16_t* name, const char16_t* caption,
                               const platform::Place& place, int tabIndex) {
        ControlDesign control;
        control.kind = kind;
        control.name = name;
        control.caption = caption;
        control.place = place;
        control.tabIndex = tabIndex;
        design.controls.push_back(control);
    };
    add(ControlKind::kRectangle, u"shpBox", u"", {90, 90, 8220, 3780}, -1);
    add(ControlKind::kTreeView, u"trvTree", u"", {105, 105, 8190, 3750}, 0);
    add(ControlKind::kSplitter, u"lblSplitterBar", u"", {105, 3855, 8190, 90}, -1);
    add(ControlKind::kRichText, u"rtbFormula", u"", {105, 3945, 8190, 1185}, 1);
    add(ControlKind::kCheckBox, u"chkEveryFunction", u"&Functions", {105, 5235, 1500, 360}, 2);
    add(ControlKind::kCheckBox, u"chkPrecise", u"&Precise evaluation", {1710, 5235, 2550, 360}, 3);
    add(ControlKind::kButton, u"cmdCancel", u"Close", {7080, 5235, 1215, 360}, 4);
    design.controls.back().isCancel = true;
    return design;
}

// The handlers are those that a real one has, in small.
struct ExplorerLike {
    explicit ExplorerLike(platform::Windows& windows) : form(windows.Load(ExplorerLikeDesign())) {
        form->SetResizable(true);
        auto& rows = tree();
        rows.AddColumn(u"", u"Element", 280);
        rows.AddColumn(u"LOCATION", u"Location", 150);
        rows.AddColumn(u"VALUE", u"Value", 120);
        const auto root = rows.AddNode(
            0, u"node 1", u"IF(SUM(Sales!B2:B13)>Limit;\"over\";VLOOKUP(A1;Rates;2;0))",
            {u"Report!C7", u"over"});
        const auto sum = rows.AddNode(root, u"node 2", u"SUM(Sales!B2:B13)", {u"", u"48210"});
        rows.AddNode(sum, u"node 3", u"Sales!B2:B13", {u"Sales!B2:B13", u"{4010;3988;…}"});
        rows.AddNode(root, u"node 4", u"Limit", {u"Setup!B4", u"40000"});
        const auto look = rows.AddNode(root, u"node 5", u"VLOOKUP(A1;Rates;2;0)", {u"", u"0.19"});
        rows.AddNode(look, u"node 6", u"A1", {u"A1", u"DE"});
        rows.AddNode(look, u"node 7", u"Rates", {u"Setup!A10:B40", u"{\"AT\";0.2|\"DE\";0.19}"});
        rows.AddNode(root, u"node 8", u"שלום&\"日本語の長いテキスト\"", {u"Wide!D4", u"日本語"});
        rows.SetExpanded(root, true);
        text().SetText(u"=IF(SUM(Sales!B2:B13)>Limit;\"over\";VLOOKUP(A1;Rates;2;0))");
        auto& precise = form->Get<platform::CheckBox>(u"chkPrecise");
        precise.SetForeColour(platform::Rgb(255, 0, 0));
        form->Get<platform::Button>(u"cmdCancel").onClick = [this] { form->Unload(); };
        rows.onSelect = [this] { Mark(); };
    }
    platform::TreeView& tree() { return form->Get<platform::TreeView>(u"trvTree"); }
    platform::RichText& text() { return form->Get<platform::RichText>(u"rtbFormula"); }

    // Marks the selected row's text in the formula.
    void Mark() {
        auto& pane = text();
        pane.SetSelection({0, static_cast<std::int32_t>(pane.Text().size())});
        pane.SetSelBold(false);
        pane.SetSelUnderline(false);
        pane.SetSelColour(0);
        const auto& part = tree().Node(tree().SelectedNode()).text;
        const auto at = pane.Text().find(part);
        if (at == std::u16string::npos) return;
        pane.SetSelection({static_cast<std::int32_t>(at), static_cast<std::int32_t>(part.size())});
        pane.SetSelBold(true);
        pane.SetSelUnderline(true);
        pane.SetSelColour(platform::Rgb(0, 0, 255));
        pane.SetSelLength(0);
    }

    std::unique_ptr<platform::Form> form;
};

}  // namespace korvane::test
