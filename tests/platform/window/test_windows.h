// A window with one control of every kind, for the tests of the window model.
#pragma once

#include "platform/window/windows.h"

namespace korvane::test {

inline constexpr const char16_t* kTree = u"trvTree";
inline constexpr const char16_t* kRich = u"rtbFormula";
inline constexpr const char16_t* kCheck = u"chkPrecise";
inline constexpr const char16_t* kButton = u"cmdCancel";
inline constexpr const char16_t* kBox = u"txtKey";
inline constexpr const char16_t* kCombo = u"cmbKey";
inline constexpr const char16_t* kLabel = u"lblKey";
inline constexpr const char16_t* kSplitter = u"lblSplitterBar";

inline platform::FormDesign EveryControl() {
    using platform::ControlDesign;
    using platform::ControlKind;
    platform::FormDesign design;
    design.name = u"FTest";
    design.caption = u"A window";
    design.place = {100, 200, 6000, 4000};
    const auto add = [&design](ControlKind kind, const char16_t* name) {
        ControlDesign control;
        control.kind = kind;
        control.name = name;
        control.caption = name;
        control.place = {0, 500.0F * static_cast<float>(design.controls.size()), 1000, 400};
        control.tabIndex = static_cast<std::int32_t>(design.controls.size());
        design.controls.push_back(control);
    };
    add(ControlKind::kTreeView, kTree);
    add(ControlKind::kRichText, kRich);
    add(ControlKind::kCheckBox, kCheck);
    add(ControlKind::kButton, kButton);
    add(ControlKind::kTextBox, kBox);
    add(ControlKind::kComboBox, kCombo);
    add(ControlKind::kLabel, kLabel);
    add(ControlKind::kSplitter, kSplitter);
    add(ControlKind::kFrame, u"Frame1");
    add(ControlKind::kPicture, u"Image1");
    add(ControlKind::kRectangle, u"shpBox");
    return design;
}

// Returns at once: for windows that never wait.
class NoModalLoop : public platform::ModalLoop {
public:
    void Run(const std::function<bool()>& /*done*/) override {}
};

// The system's windows with one of them, shown.
struct TestWindows {
    TestWindows() {
        form->Show();
        platform::TreeView& tree = form->Get<platform::TreeView>(kTree);
        tree.AddColumn(u"", u"Element", 100);
        tree.AddColumn(u"LOCATION", u"Location", 50);
        const auto root = tree.AddNode(0, u"node 1", u"=A1+B1", {u"S!C1"});
        tree.AddNode(root, u"node 2", u"A1", {u"S!A1"});
        tree.AddNode(root, u"node 3", u"B1", {u"S!B1"});
        form->Get<platform::RichText>(kRich).SetText(u"=A1+B1");
        form->Get<platform::ComboBox>(kCombo).AddItem(u"Ctrl +");
        form->Get<platform::ComboBox>(kCombo).AddItem(u"Alt +");
    }
    template <class T>
    T& Get(const char16_t* name) {
        return form->Get<T>(name);
    }
    template <class E>
    void Deliver(const char16_t* name, E event) {
        event.window = form->Id();
        event.control = form->Get<platform::Control>(name).Id();
        windows.Deliver(event);
    }

    NoModalLoop loop;
    platform::Windows windows{loop};
    std::unique_ptr<platform::Form> form = windows.Load(EveryControl());
};

}  // namespace korvane::test
