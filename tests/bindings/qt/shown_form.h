// A window of the model that a Qt view shows in this process, for tests.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <variant>
#include <vector>

#include "bindings/qt/formula_pane.h"
#include "bindings/qt/qt_view.h"
#include "bindings/qt/tree_control.h"
#include "platform/window/windows.h"

namespace korvane::test {

// A tree above a text, a bar between them, two check boxes and a button.
inline platform::FormDesign SmallExplorer() {
    using platform::ControlDesign;
    using platform::ControlKind;
    platform::FormDesign design;
    design.name = u"FSmall";
    design.caption = u"Small explorer";
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
    add(ControlKind::kSplitter, u"lblBar", u"", {105, 3855, 8190, 90}, -1);
    add(ControlKind::kRichText, u"rtbFormula", u"", {105, 3945, 8190, 1185}, 1);
    add(ControlKind::kCheckBox, u"chkFunctions", u"&Functions", {105, 5235, 1500, 360}, 2);
    add(ControlKind::kCheckBox, u"chkPrecise", u"&Precise evaluation", {1710, 5235, 2550, 360}, 3);
    add(ControlKind::kButton, u"cmdCancel", u"Close", {7080, 5235, 1215, 360}, 4);
    design.controls.back().isCancel = true;
    return design;
}

class NoLoop : public platform::ModalLoop {
public:
    void Run(const std::function<bool()>& /*done*/) override {}
};

struct ShownForm {
    explicit ShownForm(const platform::FormDesign& design = SmallExplorer(), bool fill = true) {
        form = windows.Load(design);
        windows.Attach(view);
        if (fill) Fill();
        form->SetResizable(true);
        form->Show();
        Turn();
        told.clear();
    }
    ~ShownForm() {
        form.reset();
        windows.Detach(view);
    }

    void Fill() {
        auto& tree = Tree();
        tree.AddColumn(u"", u"Element", 300);
        tree.AddColumn(u"LOCATION", u"Location", 150);
        tree.AddColumn(u"VALUE", u"Value", 120);
        tree.AddNode(0, u"node 1", u"SUM(A1:A2)+B1", {u"Sheet1!C1", u"6"});
        tree.AddNode(1, u"node 2", u"SUM(A1:A2)", {u"", u"5"});
        tree.AddNode(2, u"node 3", u"A1:A2", {u"A1:A2", u"{2;3}"});
        tree.AddNode(1, u"node 4", u"B1", {u"B1", u"1"});
        tree.SetExpanded(1, true);
        Text().SetText(u"=SUM(A1:A2)+B1");
    }
    // Lets the toolkit do what is due.
    static void Turn() {
        for (int k = 0; k < 5; ++k) QCoreApplication::processEvents();
    }

    platform::TreeView& Tree() { return form->Get<platform::TreeView>(u"trvTree"); }
    platform::RichText& Text() { return form->Get<platform::RichText>(u"rtbFormula"); }
    platform::CheckBox& Functions() { return form->Get<platform::CheckBox>(u"chkFunctions"); }
    platform::CheckBox& Precise() { return form->Get<platform::CheckBox>(u"chkPrecise"); }

    qt::FormWindow& Window() { return *view.Find(form->Id()); }
    template <class W>
    W& Widget(const char16_t* name) {
        auto& control = form->Get<platform::Control>(name);
        return dynamic_cast<W&>(Window().Find(control.Id())->widget());
    }
    qt::ColumnTree& TreeWidget() { return Widget<qt::ColumnTree>(u"trvTree"); }
    qt::FormulaText& TextWidget() { return Widget<qt::FormulaText>(u"rtbFormula"); }

    template <class E>
    std::vector<E> Told() const {
        std::vector<E> found;
        for (const auto& event : told) {
            if (const auto* what = std::get_if<E>(&event)) found.push_back(*what);
        }
        return found;
    }
    // Whether view and model hold the same.
    bool Agrees() const {
        const auto& forms = view.mirror().forms();
        return forms.size() == 1 && forms.begin()->second == form->State();
    }

    NoLoop loop;
    platform::Windows windows{loop};
    std::vector<platform::Event> told;
    std::vector<platform::MessageAnswered> answers;
    qt::QtView view{{[this](const platform::Event& event) {
                         told.push_back(event);
                         windows.Deliver(event, &view);
                     },
                     [this](const platform::MessageAnswered& answer) { answers.push_back(answer); },
                     {}}};
    std::unique_ptr<platform::Form> form;
};

}  // namespace korvane::test
