#include "bindings/scripted/scripted_command_bars.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "host/constants.h"

namespace korvane::scripted {
namespace {

using DataPtr = std::shared_ptr<ControlData>;

host::CommandBarControlPtr ControlHandle(ScriptedHost& host, DataPtr data);

class ScriptedControls : public host::CommandBarControls {
public:
    ScriptedControls(ScriptedHost& host, DataPtr owner)
        : host_(host), counted_(host), owner_(std::move(owner)) {}

    host::CommandBarControlPtr Add(const NewControl& control) override {
        host_.Enter("CommandBarControls.Add");
        const auto count = static_cast<int>(owner_->children.size());
        const int before = control.before.value_or(count + 1);
        if (before < 1 || before > count + 1) throw Error(kErrorInvalidCall, u"No such place");
        auto data = std::make_shared<ControlData>();
        data->type = control.type;
        data->id = control.id;
        data->parameter = control.parameter.value_or(u"");
        data->temporary = control.temporary;
        data->parent = owner_.get();
        owner_->children.insert(owner_->children.begin() + (before - 1), data);
        return ControlHandle(host_, data);
    }
    int Count() override {
        host_.Enter("CommandBarControls.Count");
        return static_cast<int>(owner_->children.size());
    }
    host::CommandBarControlPtr Item(int index) override {
        host_.Enter("CommandBarControls.Item");
        if (index < 1 || index > static_cast<int>(owner_->children.size())) {
            throw Error(kErrorInvalidCall, u"No such control");
        }
        return ControlHandle(host_, owner_->children[static_cast<std::size_t>(index) - 1]);
    }

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    DataPtr owner_;
};

class ClickSubscription : public host::Subscription {
public:
    ClickSubscription(DataPtr data, host::CommandBarButtonEvents& sink)
        : data_(std::move(data)), sink_(sink) {
        data_->sinks.insert(&sink_);
    }
    ClickSubscription(const ClickSubscription&) = delete;
    ClickSubscription& operator=(const ClickSubscription&) = delete;
    ~ClickSubscription() override { data_->sinks.erase(&sink_); }

private:
    DataPtr data_;
    host::CommandBarButtonEvents& sink_;
};

class ScriptedButton : public host::CommandBarButton {
public:
    ScriptedButton(ScriptedHost& host, DataPtr data)
        : host_(host), counted_(host), data_(std::move(data)) {}

    std::u16string TypeName() const override {
        return data_->type == host::msoControlPopup ? u"CommandBarPopup" : u"CommandBarButton";
    }
    int Id() override { return Enter("CommandBarControl.Id").id; }
    std::u16string Caption() override { return Enter("CommandBarControl.Caption").caption; }
    void SetCaption(const std::u16string& caption) override {
        Enter("CommandBarControl.SetCaption").caption = caption;
    }
    std::u16string Tag() override { return Enter("CommandBarControl.Tag").tag; }
    void SetTag(const std::u16string& tag) override { Enter("CommandBarControl.SetTag").tag = tag; }
    std::u16string Parameter() override { return Enter("CommandBarControl.Parameter").parameter; }
    void SetParameter(const std::u16string& parameter) override {
        Enter("CommandBarControl.SetParameter").parameter = parameter;
    }
    void SetBeginGroup(bool begin) override {
        Enter("CommandBarControl.SetBeginGroup").beginGroup = begin;
    }
    void SetVisible(bool visible) override {
        Enter("CommandBarControl.SetVisible").visible = visible;
    }
    void Delete() override {
        ControlData& data = Enter("CommandBarControl.Delete");
        auto& siblings = data.parent->children;
        siblings.erase(std::find(siblings.begin(), siblings.end(), data_));
        data.parent = nullptr;
    }
    host::CommandBarControlsPtr Controls() override {
        if (Enter("CommandBarControl.Controls").type != host::msoControlPopup) {
            throw Error(kErrorApplication, u"Only a submenu has controls");
        }
        return std::make_shared<ScriptedControls>(host_, data_);
    }
    void SetStyle(int style) override { Enter("CommandBarButton.SetStyle").style = style; }
    void SetPicture(const std::string& image) override {
        Enter("CommandBarButton.SetPicture").picture = image;
    }
    void SetMask(const std::string& image) override {
        Enter("CommandBarButton.SetMask").mask = image;
    }
    host::SubscriptionPtr Connect(host::CommandBarButtonEvents& sink) override {
        Enter("CommandBarButton.Connect");
        return std::make_unique<ClickSubscription>(data_, sink);
    }

private:
    ControlData& Enter(const char* member) {
        host_.Enter(member);
        if (!data_->parent) throw Error(kErrorObjectGone, u"The control was deleted");
        return *data_;
    }

    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    DataPtr data_;
};

class ScriptedCommandBar : public host::CommandBar {
public:
    ScriptedCommandBar(ScriptedHost& host, DataPtr data)
        : host_(host), counted_(host), data_(std::move(data)) {}
    host::CommandBarControlsPtr Controls() override {
        host_.Enter("CommandBar.Controls");
        return std::make_shared<ScriptedControls>(host_, data_);
    }

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    DataPtr data_;
};

host::CommandBarControlPtr ControlHandle(ScriptedHost& host, DataPtr data) {
    return std::make_shared<ScriptedButton>(host, std::move(data));
}

}  // namespace

ControlData& ControlData::Add(int newType, int newId, std::u16string newCaption) {
    auto child = std::make_shared<ControlData>();
    child->type = newType;
    child->id = newId;
    child->caption = std::move(newCaption);
    child->parent = this;
    children.push_back(child);
    return *child;
}

void ControlData::Walk(const std::function<void(ControlData&)>& visit) {
    visit(*this);
    for (const auto& child : children) child->Walk(visit);
}

std::shared_ptr<ControlData> BuiltInBars() {
    auto root = std::make_shared<ControlData>();
    ControlData& menu = root->Add(host::msoControlPopup, 1, u"Worksheet Menu Bar");
    menu.Add(host::msoControlPopup, 30002, u"&File");
    ControlData& tools = menu.Add(host::msoControlPopup, 30007, u"&Tools");
    tools.Add(host::msoControlButton, 2, u"&Spelling...");
    ControlData& auditing = tools.Add(host::msoControlPopup, 30028, u"Formula A&uditing");
    auditing.Add(host::msoControlButton, 486, u"&Trace Precedents");
    auditing.Add(host::msoControlButton, 892, u"Formula Auditing &Toolbar");
    root->Add(host::msoControlPopup, 1, u"Formula Auditing");
    return root;
}

host::CommandBarPtr ScriptedCommandBars::Item(const std::u16string& name) {
    host_.Enter("CommandBars.Item", name);
    for (const auto& bar : host_.bars()->children) {
        if (EqualIgnoringCase(bar->caption, name)) {
            return std::make_shared<ScriptedCommandBar>(host_, bar);
        }
    }
    throw Error(kErrorInvalidCall, u"No such command bar");
}

host::CommandBarControlPtr ScriptedCommandBars::FindControl(const std::u16string& tag) {
    host_.Enter("CommandBars.FindControl", tag);
    DataPtr found;
    host_.bars()->Walk([&](ControlData& control) {
        if (!found && control.parent && control.tag == tag) found = control.shared_from_this();
    });
    return found ? ControlHandle(host_, found) : nullptr;
}

// The host raises a click for every sink that is bound to a control of the tag.
void ScriptedHost::RaiseClick(const host::CommandBarControlPtr& control, bool& cancelDefault) {
    const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(control);
    if (!button) return;
    std::set<host::CommandBarButtonEvents*> sinks;
    const std::u16string tag = button->Tag();
    bars_->Walk([&](ControlData& data) {
        if (data.tag == tag) sinks.insert(data.sinks.begin(), data.sinks.end());
    });
    for (auto* sink : sinks) sink->Click(button, cancelDefault);
}

}  // namespace korvane::scripted
