#include "bindings/scripted/scripted_command_bars.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "host/constants.h"

namespace korvane::scripted {
namespace {

using DataPtr = std::shared_ptr<ControlData>;

host::CommandBarControlPtr ControlHandle(ScriptedHost& host, DataPtr data);

void RequireOnBar(const ControlData& control) {
    if (!control.parent) throw Error(kErrorObjectGone, u"The control was deleted");
}

class ScriptedControls : public host::CommandBarControls {
public:
    ScriptedControls(ScriptedHost& host, DataPtr owner)
        : host_(host), counted_(host), owner_(std::move(owner)) {}

    host::CommandBarControlPtr Add(const NewControl& control) override {
        Enter("CommandBarControls.Add");
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
        Enter("CommandBarControls.Count");
        return static_cast<int>(owner_->children.size());
    }
    host::CommandBarControlPtr Item(int index) override {
        Enter("CommandBarControls.Item");
        if (index < 1 || index > static_cast<int>(owner_->children.size())) {
            throw Error(kErrorInvalidCall, u"No such control");
        }
        return ControlHandle(host_, owner_->children[static_cast<std::size_t>(index) - 1]);
    }

private:
    void Enter(const char* member) {
        host_.Enter(member);
        RequireOnBar(*owner_);
    }

    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    DataPtr owner_;
};

class ClickSubscription : public host::Subscription {
public:
    ClickSubscription(ScriptedHost& host, DataPtr data, host::CommandBarButtonEvents& sink)
        : counted_(host), data_(std::move(data)), place_(data_->sinks.insert(&sink)) {}
    ClickSubscription(const ClickSubscription&) = delete;
    ClickSubscription& operator=(const ClickSubscription&) = delete;
    ~ClickSubscription() override { data_->sinks.erase(place_); }

private:
    ScriptedHost::Counted counted_;
    DataPtr data_;
    std::multiset<host::CommandBarButtonEvents*>::iterator place_;
};

// What buttons and submenus have in common.
template <typename Interface>
class ScriptedControl : public Interface {
public:
    ScriptedControl(ScriptedHost& host, DataPtr data)
        : host_(host), counted_(host), data_(std::move(data)) {}

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
    void Delete() override { Enter("CommandBarControl.Delete").Delete(); }
    host::CommandBarControlsPtr Controls() override {
        if (Enter("CommandBarControl.Controls").type != host::msoControlPopup) {
            throw Error(kErrorApplication, u"Only a submenu has controls");
        }
        return std::make_shared<ScriptedControls>(host_, data_);
    }

protected:
    ControlData& Enter(const char* member) {
        host_.Enter(member);
        RequireOnBar(*data_);
        return *data_;
    }

    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    DataPtr data_;
};

class ScriptedPopup : public ScriptedControl<host::CommandBarControl> {
public:
    using ScriptedControl::ScriptedControl;
    std::u16string TypeName() const override { return u"CommandBarPopup"; }
};

class ScriptedButton : public ScriptedControl<host::CommandBarButton> {
public:
    using ScriptedControl::ScriptedControl;

    void SetStyle(int style) override { Enter("CommandBarButton.SetStyle").style = style; }
    void SetPicture(const std::string& image) override {
        Enter("CommandBarButton.SetPicture").picture = image;
    }
    void SetMask(const std::string& image) override {
        Enter("CommandBarButton.SetMask").mask = image;
    }
    host::SubscriptionPtr Connect(host::CommandBarButtonEvents& sink) override {
        Enter("CommandBarButton.Connect");
        return std::make_unique<ClickSubscription>(host_, data_, sink);
    }
    const DataPtr& data() const { return data_; }
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
    if (data->type == host::msoControlPopup) {
        return std::make_shared<ScriptedPopup>(host, std::move(data));
    }
    return std::make_shared<ScriptedButton>(host, std::move(data));
}

// A line of BarsText.
void AppendControl(std::string& text, const ControlData& control, int depth) {
    text.append(2 * static_cast<std::size_t>(depth - 1), ' ').append(ToUtf8(control.caption));
    if (depth > 1) text += " id=" + std::to_string(control.id);
    if (!control.tag.empty()) text += " tag=" + ToUtf8(control.tag);
    if (!control.parameter.empty()) text += " parameter=" + ToUtf8(control.parameter);
    if (control.beginGroup) text += " group";
    if (control.style != 0) text += " style=" + std::to_string(control.style);
    if (!control.visible) text += " hidden";
    if (control.temporary) text += " temporary";
    text += '\n';
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

void ControlData::Walk(const std::function<void(ControlData&, int depth)>& visit, int depth) {
    visit(*this, depth);
    for (const auto& child : children) child->Walk(visit, depth + 1);
}

void ControlData::Delete() {
    const auto self = shared_from_this();
    auto& siblings = parent->children;
    siblings.erase(std::find(siblings.begin(), siblings.end(), self));
    Walk([](ControlData& control, int /*depth*/) { control.parent = nullptr; });
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
    host_.bars()->Walk([&](ControlData& control, int /*depth*/) {
        if (!found && control.parent && control.tag == tag) found = control.shared_from_this();
    });
    return found ? ControlHandle(host_, found) : nullptr;
}

// The host raises a click for every sink that is bound to a control of the tag.
void ScriptedHost::RaiseClick(const host::CommandBarControlPtr& control, bool& cancelDefault) {
    const auto button = std::dynamic_pointer_cast<ScriptedButton>(control);
    if (!button || !button->data()->parent) return;
    const std::u16string tag = button->data()->tag;
    const auto bound = [&] {
        std::multiset<host::CommandBarButtonEvents*> sinks;
        bars_->Walk([&](ControlData& data, int /*depth*/) {
            if (data.tag == tag) sinks.insert(data.sinks.begin(), data.sinks.end());
        });
        return sinks;
    };
    for (auto* sink : bound()) {
        // Sinks may let go while one is called.
        if (bound().contains(sink)) sink->Click(button, cancelDefault);
    }
}

std::string ScriptedHost::BarsText() const {
    std::string text;
    bars_->Walk([&](ControlData& control, int depth) {
        if (depth > 0) AppendControl(text, control, depth);
    });
    return text;
}

}  // namespace korvane::scripted
