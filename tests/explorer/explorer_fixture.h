// Real explorer windows over a scripted host, driven by their user's events.
#pragma once

#include "explorer/explorer.h"
#include "explorer/explorer_design.h"
#include "host/addin/running_addin.h"

namespace korvane::test {

// S!A1 holds =IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate; B1 is 2 and C1 is 3.
inline std::unique_ptr<scripted::ScriptedHost> HostToExplore() {
    return HostWith("=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate",
                    R"json("B1":{"formula":"=C1-1","value":2},"C1":3,"D1":4)json",
                    R"json("literals":true,"evaluate":{
                        "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))":{"value":5},
                        "=B1>1":{"value":true},"=SUM(B1,C1)":{"value":5},
                        "=OFFSET(B1,0,1)":{"range":"S!C1"},
                        "=Rate":{"range":"S!D1"},"=B1*2":{"value":4}})json");
}

class ExplorerFixture : public RunningAddin {
protected:
    ExplorerFixture() : RunningAddin(HostToExplore()) {
        host_->model().activeBook->names[u"rate"] = {u"Rate", u"=S!$D$1"};
        windows_.makeExplorer = [this] { return std::make_shared<FExplorer>(state_, commands_); };
        Open();
    }

    // The window opened last.
    platform::Form& form() { return *platform_.windows.forms().rbegin()->second; }
    template <class T>
    T& Get(const char16_t* name) {
        return form().Get<T>(name);
    }
    platform::TreeView& tree() { return Get<platform::TreeView>(explorer_controls::kTree); }
    platform::RichText& pane() { return Get<platform::RichText>(explorer_controls::kFormula); }
    platform::CheckBox& functions() {
        return Get<platform::CheckBox>(explorer_controls::kEveryFunction);
    }
    platform::CheckBox& precise() { return Get<platform::CheckBox>(explorer_controls::kPrecise); }

    template <class E>
    void Deliver(const char16_t* name, E event) {
        event.window = form().Id();
        event.control = form().Get<platform::Control>(name).Id();
        platform_.windows.Deliver(event);
    }
    void Select(std::int32_t node) {
        Deliver(explorer_controls::kTree, platform::NodeSelected{0, 0, node});
    }
    void Key(const char16_t* control, std::int32_t code, std::int32_t shift) {
        Deliver(control, platform::KeyDown{0, 0, code, shift});
    }
    void Resize(float width, float height) {
        platform_.windows.Deliver(
            platform::FormPlaced{form().Id(), {form().Left(), form().Top(), width, height}});
    }
    // Row by row: number, indentation, text, location and value.
    std::string TreeText() {
        std::string text;
        for (std::int32_t k = 1; k <= tree().NodeCount(); ++k) {
            const platform::TreeNode& node = tree().Node(k);
            for (auto above = node.parent; above != 0; above = tree().Node(above).parent) {
                text += "  ";
            }
            text += ToUtf8(node.text) + " | " + ToUtf8(node.subItems.at(0)) + " | " +
                    ToUtf8(node.subItems.at(1)) + "\n";
        }
        return text;
    }
    std::u16string& Setting(const char16_t* key) {
        return platform_.settings.texts[{u"Korvane", u"Korvane Explorer", key}];
    }
    // The marked characters; empty for none.
    std::string Marked() {
        std::string marked;
        for (std::int32_t k = 0; k < static_cast<std::int32_t>(pane().Text().size()); ++k) {
            if (pane().LookAt(k) != platform::TextLook()) {
                marked += ToUtf8(pane().Text().substr(static_cast<std::size_t>(k), 1));
            }
        }
        return marked;
    }
};

}  // namespace korvane::test
