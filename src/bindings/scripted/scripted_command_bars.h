// The scripted host's menu bar and toolbars: a tree of controls.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bindings/scripted/scripted_host.h"
#include "host/command_bars.h"

namespace korvane::scripted {

struct ControlData : std::enable_shared_from_this<ControlData> {
    int type = 0;
    int id = 1;
    std::u16string caption;  // of a bar: its name
    std::u16string tag;
    std::u16string parameter;
    bool beginGroup = false;
    bool visible = true;
    bool temporary = false;
    int style = 0;
    std::string picture;
    std::string mask;
    ControlData* parent = nullptr;  // null once it is deleted, and for the root
    std::vector<std::shared_ptr<ControlData>> children;
    std::multiset<host::CommandBarButtonEvents*> sinks;  // one for each subscription

    ControlData& Add(int newType, int newId, std::u16string newCaption);
    // Itself and everything below, in order; `depth` is 0 for itself.
    void Walk(const std::function<void(ControlData&, int depth)>& visit, int depth = 0);
    // Takes it off its bar: neither it nor anything below answers any more.
    void Delete();
};

// "Worksheet Menu Bar" with the Tools menu (30007) and in it the formula
// auditing submenu (30028), and the toolbar "Formula Auditing".
std::shared_ptr<ControlData> BuiltInBars();

class ScriptedCommandBars : public host::CommandBars {
public:
    explicit ScriptedCommandBars(ScriptedHost& host) : host_(host), counted_(host) {}
    host::CommandBarPtr Item(const std::u16string& name) override;
    host::CommandBarControlPtr FindControl(const std::u16string& tag) override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
};

}  // namespace korvane::scripted
