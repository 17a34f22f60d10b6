#include "bindings/calc/desk/calc_command_bars.h"

#include <com/sun/star/ui/ItemStyle.hpp>
#include <vector>

#include "base/text.h"
#include "bindings/calc/desk/own_controls.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"
#include "host/constants.h"

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

using OwnControlsPtr = std::shared_ptr<OwnControls>;

constexpr const char16_t* kMenuBarName = u"Worksheet Menu Bar";
constexpr const char16_t* kAuditingToolbarName = u"Formula Auditing";

// The numbers by which the system knows some of the host's own entries.
int IdOf(const std::u16string& url) {
    if (url == u".uno:ToolsMenu") return 30007;
    if (url == u".uno:AuditMenu") return 30028;
    return 0;
}

host::CommandBarControlPtr ControlHandle(const OwnControlsPtr& controls, const EntriesPlace& place,
                                         const std::u16string& url);
host::CommandBarControlPtr ControlHandle(const OwnControlsPtr& controls,
                                         const OwnControlPtr& control);
void RaiseClick(OwnControls& controls, const OwnControlPtr& control);

class EntryControls : public host::CommandBarControls {
public:
    EntryControls(OwnControlsPtr controls, EntriesPlace place)
        : controls_(std::move(controls)), place_(std::move(place)) {}

    host::CommandBarControlPtr Add(const NewControl& added) override {
        return Translated([&] {
            const bool isPopup = added.type == host::msoControlPopup;
            if ((!isPopup && added.type != host::msoControlButton) || added.id != 1) {
                Fail(u"Only buttons and submenus of one's own can be added");
            }
            if (!added.temporary) Fail(u"A control cannot be kept when Calc closes");
            const EntriesPtr entries = controls_->Read(place_);
            const auto places = ControlPlaces(entries);
            const int end = static_cast<int>(places.size()) + 1;
            const int before = added.before.value_or(end);
            if (before < 1 || before > end) throw Error(kErrorInvalidCall, u"No such place");
            const sal_Int32 index =
                before == end ? entries->getCount() : places[static_cast<std::size_t>(before) - 1];
            const auto control = std::make_shared<OwnControl>();
            control->place = place_;
            control->type = added.type;
            control->parameter = added.parameter.value_or(u"");
            const std::weak_ptr<OwnControls> weak = controls_;
            const std::weak_ptr<OwnControl> clicked = control;
            control->url = controls_->commands().Add([weak, clicked] {
                const auto all = weak.lock();
                const auto one = clicked.lock();
                if (all && one) RaiseClick(*all, one);
            });
            try {
                controls_->Add(control, index);
            } catch (...) {
                controls_->commands().Remove(control->url);
                throw;
            }
            return ControlHandle(controls_, control);
        });
    }
    int Count() override {
        return Translated(
            [&] { return static_cast<int>(ControlPlaces(controls_->Read(place_)).size()); });
    }
    host::CommandBarControlPtr Item(int index) override {
        return Translated([&] {
            const EntriesPtr entries = controls_->Read(place_);
            const auto places = ControlPlaces(entries);
            if (index < 1 || index > static_cast<int>(places.size())) {
                throw Error(kErrorInvalidCall, u"No such control");
            }
            const sal_Int32 place = places[static_cast<std::size_t>(index) - 1];
            return ControlHandle(controls_, place_, UrlOf(entries, place));
        });
    }

private:
    OwnControlsPtr controls_;
    EntriesPlace place_;
};

// What all entries have in common, Calc's and the add-in's. `own` is null for
// Calc's.
template <typename Interface>
class Control : public Interface {
public:
    Control(OwnControlsPtr controls, EntriesPlace place, std::u16string url, OwnControlPtr own)
        : controls_(std::move(controls)),
          place_(std::move(place)),
          url_(std::move(url)),
          own_(std::move(own)) {}

    int Id() override {
        return Look([&](const EntriesPtr&, sal_Int32) { return own_ ? 1 : IdOf(url_); });
    }
    std::u16string Caption() override {
        return Look([&](const EntriesPtr& entries, sal_Int32 index) {
            const std::u16string label = LabelOf(entries, index);
            return CaptionOfLabel(label.empty() && !own_ ? controls_->labels().Label(url_) : label);
        });
    }
    void SetCaption(const std::u16string& caption) override {
        SetProperty(u"Label", css::uno::Any(ToOUString(LabelOfCaption(caption))));
    }
    std::u16string Tag() override {
        return Look([&](const EntriesPtr&, sal_Int32) { return own_ ? own_->tag : u""; });
    }
    void SetTag(const std::u16string& tag) override {
        Keep([&] { own_->tag = tag; });
    }
    std::u16string Parameter() override {
        return Look([&](const EntriesPtr&, sal_Int32) { return own_ ? own_->parameter : u""; });
    }
    void SetParameter(const std::u16string& parameter) override {
        Keep([&] { own_->parameter = parameter; });
    }
    void SetBeginGroup(bool begin) override {
        Keep([&] { controls_->SetSeparated(*own_, begin); });
    }
    void SetVisible(bool visible) override { SetProperty(u"IsVisible", css::uno::Any(visible)); }
    void Delete() override {
        Keep([&] { controls_->Delete(*own_); });
    }
    host::CommandBarControlsPtr Controls() override {
        return Look([&](const EntriesPtr& entries, sal_Int32 index) -> host::CommandBarControlsPtr {
            if (!SubmenuOf(entries, index).is()) Fail(u"Only a submenu has controls");
            return std::make_shared<EntryControls>(controls_, place_.Below(url_));
        });
    }

protected:
    // Runs `call` with the entry. Raises when it is there no more.
    template <class Call>
    auto Look(Call&& call) {
        return Translated([&] {
            if (own_ && controls_->Find(url_) != own_) ThrowGone();
            const EntriesPtr entries = controls_->Read(place_);
            const sal_Int32 index = FindUrl(entries, url_);
            if (index < 0) ThrowGone();
            return call(entries, index);
        });
    }
    // The same for what only one's own controls have.
    template <class Call>
    void Keep(Call&& call) {
        Look([&](const EntriesPtr&, sal_Int32) {
            if (!own_) Fail(u"Calc's own menus and buttons stay as they are");
            call();
        });
    }
    void SetProperty(const char16_t* name, const css::uno::Any& value) {
        Keep([&] {
            const auto entries = controls_->Change(place_);
            SetEntryProperty(entries, FindUrl(Reading(entries), url_), name, value);
        });
    }
    [[noreturn]] static void ThrowGone() {
        throw Error(kErrorObjectGone, u"The control was deleted");
    }

    OwnControlsPtr controls_;
    EntriesPlace place_;
    std::u16string url_;
    OwnControlPtr own_;
};

class Popup : public Control<host::CommandBarControl> {
public:
    using Control::Control;
    std::u16string TypeName() const override { return u"CommandBarPopup"; }
};

class ClickSubscription : public host::Subscription {
public:
    ClickSubscription(OwnControlPtr control, host::CommandBarButtonEvents& sink)
        : control_(std::move(control)), place_(control_->sinks.insert(&sink)) {}
    ClickSubscription(const ClickSubscription&) = delete;
    ClickSubscription& operator=(const ClickSubscription&) = delete;
    ~ClickSubscription() override { control_->sinks.erase(place_); }

private:
    OwnControlPtr control_;
    std::multiset<host::CommandBarButtonEvents*>::iterator place_;
};

class Button : public Control<host::CommandBarButton> {
public:
    using Control::Control;

    // A menu shows a caption whatever the style.
    void SetStyle(int style) override {
        namespace ItemStyle = css::ui::ItemStyle;
        const bool inMenu = place_.bar == Bar::kMenu;
        sal_Int16 items = 0;
        if (style == host::msoButtonIcon) items = ItemStyle::ICON;
        if (inMenu && items != 0) items |= ItemStyle::TEXT;
        SetProperty(u"Style", css::uno::Any(items));
    }
    void SetPicture(const std::string& image) override {
        Keep([&] { controls_->pictures().Set(url_, image); });
    }
    // The office takes a picture's transparency from the picture itself, so
    // there is nothing that the mask could add.
    void SetMask(const std::string& image) override {
        Keep([&] { own_->mask = image; });
    }
    host::SubscriptionPtr Connect(host::CommandBarButtonEvents& sink) override {
        return Look([&](const EntriesPtr&, sal_Int32) -> host::SubscriptionPtr {
            return std::make_unique<ClickSubscription>(own_, sink);
        });
    }
};

class CalcCommandBar : public host::CommandBar {
public:
    CalcCommandBar(OwnControlsPtr controls, Bar bar) : controls_(std::move(controls)), bar_(bar) {}
    host::CommandBarControlsPtr Controls() override {
        return std::make_shared<EntryControls>(controls_, EntriesPlace{bar_, {}});
    }

private:
    OwnControlsPtr controls_;
    Bar bar_;
};

host::CommandBarControlPtr ControlHandle(const OwnControlsPtr& controls, const EntriesPlace& place,
                                         const std::u16string& url) {
    if (const auto own = controls->Find(url)) return ControlHandle(controls, own);
    const EntriesPtr entries = controls->Read(place);
    if (SubmenuOf(entries, FindUrl(entries, url)).is()) {
        return std::make_shared<Popup>(controls, place, url, nullptr);
    }
    return std::make_shared<Control<host::CommandBarControl>>(controls, place, url, nullptr);
}

host::CommandBarControlPtr ControlHandle(const OwnControlsPtr& controls,
                                         const OwnControlPtr& control) {
    if (control->type == host::msoControlPopup) {
        return std::make_shared<Popup>(controls, control->place, control->url, control);
    }
    return std::make_shared<Button>(controls, control->place, control->url, control);
}

// The bar's number and the indices on the way from it to the control; -1 at the end
// when it is there no more.
std::vector<sal_Int32> PathTo(OwnControls& controls, const OwnControl& control) {
    EntriesPlace place{control.place.bar, {}};
    std::vector<sal_Int32> path{static_cast<sal_Int32>(place.bar)};
    for (const auto& menu : control.place.menus) {
        path.push_back(FindUrl(controls.Read(place), menu));
        place = place.Below(menu);
    }
    path.push_back(FindUrl(controls.Read(place), control.url));
    return path;
}

// Every sink that is bound to a control with the tag of the clicked one hears it.
void RaiseClick(OwnControls& controls, const OwnControlPtr& control) {
    const auto bound = [&] {
        std::multiset<host::CommandBarButtonEvents*> sinks;
        for (const auto& other : controls.all()) {
            if (other->tag == control->tag) sinks.insert(other->sinks.begin(), other->sinks.end());
        }
        return sinks;
    };
    const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(
        ControlHandle(controls.shared_from_this(), control));
    if (!button) return;
    for (auto* const sink : bound()) {
        // Sinks may let go while one is called. The entry has nothing else to do.
        bool cancelDefault = false;
        if (bound().contains(sink)) sink->Click(button, cancelDefault);
    }
}

}  // namespace

CalcCommandBars::CalcCommandBars(const css::uno::Reference<css::uno::XComponentContext>& context,
                                 std::shared_ptr<CommandTable> commands)
    : controls_(
          Translated([&] { return std::make_shared<OwnControls>(context, std::move(commands)); })) {
}

CalcCommandBars::~CalcCommandBars() { Close(); }

void CalcCommandBars::Close() noexcept { controls_->Close(); }

host::CommandBarPtr CalcCommandBars::Item(const std::u16string& name) {
    if (EqualIgnoringCase(name, kMenuBarName)) {
        return std::make_shared<CalcCommandBar>(controls_, Bar::kMenu);
    }
    if (EqualIgnoringCase(name, kAuditingToolbarName)) {
        return std::make_shared<CalcCommandBar>(controls_, Bar::kToolbar);
    }
    throw Error(kErrorInvalidCall, u"No such command bar");
}

host::CommandBarControlPtr CalcCommandBars::FindControl(const std::u16string& tag) {
    return Translated([&]() -> host::CommandBarControlPtr {
        controls_->Write();
        OwnControlPtr first;
        std::vector<sal_Int32> firstPath;
        for (const auto& control : controls_->all()) {
            if (control->tag != tag) continue;
            auto path = PathTo(*controls_, *control);
            if (path.back() < 0 || (first && firstPath < path)) continue;
            first = control;
            firstPath = std::move(path);
        }
        return first ? ControlHandle(controls_, first) : nullptr;
    });
}

}  // namespace korvane::calc
