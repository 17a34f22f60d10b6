#include "support/watched_host.h"

#include <utility>

#include "host/command_bars.h"
#include "host/name.h"
#include "host/range.h"
#include "host/worksheet.h"

namespace korvane::test {
namespace {

// What all watched objects of a host share.
struct Watch {
    std::shared_ptr<scripted::Accesses> accesses;
    std::shared_ptr<int> liveHandles;
};

// Counts a handle for as long as it lives.
class Counted {
public:
    explicit Counted(Watch watch) : watch_(std::move(watch)) { ++*watch_.liveHandles; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --*watch_.liveHandles; }
    const Watch& watch() const { return watch_; }

private:
    Watch watch_;
};

// What stands in the place of an object of the host.
template <class Interface>
class Watched : public Interface {
public:
    Watched(Watch watch, std::shared_ptr<Interface> inner)
        : counted_(std::move(watch)), inner_(std::move(inner)) {}
    std::u16string TypeName() const override { return inner_->TypeName(); }

protected:
    Interface& Enter(const char* member, std::u16string_view detail = {}) {
        counted_.watch().accesses->Enter(member, detail);
        return *inner_;
    }
    const Watch& watch() const { return counted_.watch(); }
    Interface& inner() { return *inner_; }

private:
    Counted counted_;
    std::shared_ptr<Interface> inner_;
};

template <class Class, class Interface>
std::shared_ptr<Interface> Wrap(const Watch& watch, std::shared_ptr<Interface> inner) {
    return inner ? std::make_shared<Class>(watch, std::move(inner)) : nullptr;
}

host::RangePtr WatchedOf(const Watch& watch, host::RangePtr range);
host::WorkbookPtr WatchedOf(const Watch& watch, host::WorkbookPtr workbook);

// Of what is no range nothing is asked but its type.
ObjectPtr WatchedOf(const Watch& watch, ObjectPtr object) {
    if (auto range = std::dynamic_pointer_cast<host::Range>(object)) {
        return WatchedOf(watch, std::move(range));
    }
    return object;
}

Value WatchedOf(const Watch& watch, Value value) {
    if (auto object = value.AsObject()) return Value(WatchedOf(watch, std::move(object)));
    return value;
}

class WatchedInterior : public Watched<host::Interior> {
public:
    using Watched::Watched;
    korvane::Value ColorIndex() override { return Enter("Interior.ColorIndex").ColorIndex(); }
    void SetColorIndex(const korvane::Value& index) override {
        Enter("Interior.SetColorIndex").SetColorIndex(index);
    }
    korvane::Value Color() override { return Enter("Interior.Color").Color(); }
    void SetColor(double color) override { Enter("Interior.SetColor").SetColor(color); }
};

class WatchedName : public Watched<host::Name> {
public:
    using Watched::Watched;
    std::u16string Name_() override { return Enter("Name.Name").Name_(); }
    std::u16string RefersTo() override { return Enter("Name.RefersTo").RefersTo(); }
};

class WatchedNames : public Watched<host::Names> {
public:
    using Watched::Watched;
    host::NamePtr Item(std::u16string_view text) override {
        return Wrap<WatchedName>(watch(), Enter("Names.Item", text).Item(text));
    }
};

class WatchedWorksheet : public Watched<host::Worksheet> {
public:
    using Watched::Watched;
    std::u16string Name() override { return Enter("Worksheet.Name").Name(); }
    host::WorkbookPtr Parent() override {
        return WatchedOf(watch(), Enter("Worksheet.Parent").Parent());
    }
    host::NamesPtr Names() override {
        return Wrap<WatchedNames>(watch(), Enter("Worksheet.Names").Names());
    }
    bool ProtectContents() override { return Enter("Worksheet.ProtectContents").ProtectContents(); }
    void Activate() override { Enter("Worksheet.Activate").Activate(); }
};

class WatchedWorkbook : public Watched<host::Workbook> {
public:
    using Watched::Watched;
    std::u16string Name() override { return Enter("Workbook.Name").Name(); }
    std::u16string Path() override { return Enter("Workbook.Path").Path(); }
    host::NamesPtr Names() override {
        return Wrap<WatchedNames>(watch(), Enter("Workbook.Names").Names());
    }
    void Activate() override { Enter("Workbook.Activate").Activate(); }
};

class WatchedRange : public Watched<host::Range> {
public:
    using Watched::Watched;
    korvane::Value Formula() override { return Enter("Range.Formula").Formula(); }
    void SetFormula(const std::u16string& formula) override {
        Enter("Range.SetFormula", formula).SetFormula(formula);
    }
    korvane::Value FormulaArray() override { return Enter("Range.FormulaArray").FormulaArray(); }
    void SetFormulaArray(const std::u16string& formula) override {
        Enter("Range.SetFormulaArray", formula).SetFormulaArray(formula);
    }
    bool HasArray() override { return Enter("Range.HasArray").HasArray(); }
    host::RangePtr CurrentArray() override {
        return WatchedOf(watch(), Enter("Range.CurrentArray").CurrentArray());
    }
    korvane::Value Value() override { return Enter("Range.Value").Value(); }
    std::int64_t CountLarge() override { return Enter("Range.CountLarge").CountLarge(); }
    korvane::Value Text() override { return Enter("Range.Text").Text(); }
    std::u16string Address(const host::AddressForm& form) override {
        return Enter("Range.Address").Address(form);
    }
    host::WorksheetPtr Worksheet() override {
        return Wrap<WatchedWorksheet>(watch(), Enter("Range.Worksheet").Worksheet());
    }
    host::NamePtr Name() override { return Wrap<WatchedName>(watch(), Enter("Range.Name").Name()); }
    host::RangePtr EntireRow() override {
        return WatchedOf(watch(), Enter("Range.EntireRow").EntireRow());
    }
    host::RangePtr EntireColumn() override {
        return WatchedOf(watch(), Enter("Range.EntireColumn").EntireColumn());
    }
    korvane::Value Hidden() override { return Enter("Range.Hidden").Hidden(); }
    host::InteriorPtr Interior() override {
        return Wrap<WatchedInterior>(watch(), Enter("Range.Interior").Interior());
    }
    void Select() override { Enter("Range.Select").Select(); }
    void Activate() override { Enter("Range.Activate").Activate(); }
};

host::RangePtr WatchedOf(const Watch& watch, host::RangePtr range) {
    return Wrap<WatchedRange>(watch, std::move(range));
}

host::WorkbookPtr WatchedOf(const Watch& watch, host::WorkbookPtr workbook) {
    return Wrap<WatchedWorkbook>(watch, std::move(workbook));
}

host::CommandBarControlPtr WatchedOf(const Watch& watch, host::CommandBarControlPtr control);

class WatchedControls : public Watched<host::CommandBarControls> {
public:
    using Watched::Watched;
    host::CommandBarControlPtr Add(const NewControl& control) override {
        return WatchedOf(watch(), Enter("CommandBarControls.Add").Add(control));
    }
    int Count() override { return Enter("CommandBarControls.Count").Count(); }
    host::CommandBarControlPtr Item(int index) override {
        return WatchedOf(watch(), Enter("CommandBarControls.Item").Item(index));
    }
};

// What buttons and submenus have in common.
template <class Interface>
class WatchedControl : public Watched<Interface> {
public:
    using Watched<Interface>::Watched;
    int Id() override { return this->Enter("CommandBarControl.Id").Id(); }
    std::u16string Caption() override { return this->Enter("CommandBarControl.Caption").Caption(); }
    void SetCaption(const std::u16string& caption) override {
        this->Enter("CommandBarControl.SetCaption").SetCaption(caption);
    }
    std::u16string Tag() override { return this->Enter("CommandBarControl.Tag").Tag(); }
    void SetTag(const std::u16string& tag) override {
        this->Enter("CommandBarControl.SetTag").SetTag(tag);
    }
    std::u16string Parameter() override {
        return this->Enter("CommandBarControl.Parameter").Parameter();
    }
    void SetParameter(const std::u16string& parameter) override {
        this->Enter("CommandBarControl.SetParameter").SetParameter(parameter);
    }
    void SetBeginGroup(bool begin) override {
        this->Enter("CommandBarControl.SetBeginGroup").SetBeginGroup(begin);
    }
    void SetVisible(bool visible) override {
        this->Enter("CommandBarControl.SetVisible").SetVisible(visible);
    }
    void Delete() override { this->Enter("CommandBarControl.Delete").Delete(); }
    host::CommandBarControlsPtr Controls() override {
        return Wrap<WatchedControls>(this->watch(),
                                     this->Enter("CommandBarControl.Controls").Controls());
    }
};

// The last thing that it does is to tell the sink, which may let go of it.
class ClickSink : public host::CommandBarButtonEvents {
public:
    ClickSink(Watch watch, host::CommandBarButtonEvents& sink)
        : watch_(std::move(watch)), sink_(sink) {}
    void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override {
        sink_.Click(std::dynamic_pointer_cast<host::CommandBarButton>(
                        WatchedOf(watch_, host::CommandBarControlPtr(control))),
                    cancelDefault);
    }

private:
    Watch watch_;
    host::CommandBarButtonEvents& sink_;
};

class WindowSink : public host::ApplicationEvents {
public:
    WindowSink(Watch watch, host::ApplicationEvents& sink)
        : watch_(std::move(watch)), sink_(sink) {}
    void WindowActivate(const host::WorkbookPtr& workbook) override {
        sink_.WindowActivate(WatchedOf(watch_, workbook));
    }

private:
    Watch watch_;
    host::ApplicationEvents& sink_;
};

// A subscription of `Sink`, which tells the one that asked for it.
template <class Sink>
class WatchedSubscription : public host::Subscription {
public:
    template <class Object, class Wanted>
    WatchedSubscription(const Watch& watch, Object& object, Wanted& sink)
        : counted_(watch), sink_(watch, sink), inner_(object.Connect(sink_)) {}

private:
    Counted counted_;
    Sink sink_;
    host::SubscriptionPtr inner_;
};

class WatchedButton : public WatchedControl<host::CommandBarButton> {
public:
    using WatchedControl::WatchedControl;
    void SetStyle(int style) override { Enter("CommandBarButton.SetStyle").SetStyle(style); }
    void SetPicture(const std::string& image) override {
        Enter("CommandBarButton.SetPicture").SetPicture(image);
    }
    void SetMask(const std::string& image) override {
        Enter("CommandBarButton.SetMask").SetMask(image);
    }
    host::SubscriptionPtr Connect(host::CommandBarButtonEvents& sink) override {
        auto& button = Enter("CommandBarButton.Connect");
        return std::make_unique<WatchedSubscription<ClickSink>>(watch(), button, sink);
    }
};

host::CommandBarControlPtr WatchedOf(const Watch& watch, host::CommandBarControlPtr control) {
    if (auto button = std::dynamic_pointer_cast<host::CommandBarButton>(control)) {
        return Wrap<WatchedButton>(watch, std::move(button));
    }
    return Wrap<WatchedControl<host::CommandBarControl>>(watch, std::move(control));
}

class WatchedBar : public Watched<host::CommandBar> {
public:
    using Watched::Watched;
    host::CommandBarControlsPtr Controls() override {
        return Wrap<WatchedControls>(watch(), Enter("CommandBar.Controls").Controls());
    }
};

class WatchedBars : public Watched<host::CommandBars> {
public:
    using Watched::Watched;
    host::CommandBarPtr Item(const std::u16string& name) override {
        return Wrap<WatchedBar>(watch(), Enter("CommandBars.Item", name).Item(name));
    }
    host::CommandBarControlPtr FindControl(const std::u16string& tag) override {
        return WatchedOf(watch(), Enter("CommandBars.FindControl", tag).FindControl(tag));
    }
};

class WatchedApplication : public Watched<host::Application> {
public:
    using Watched::Watched;
    std::u16string Version() override { return Enter("Application.Version").Version(); }
    std::u16string Caption() override { return Enter("Application.Caption").Caption(); }
    std::int64_t Hwnd() override { return Enter("Application.Hwnd").Hwnd(); }
    void SetStatusBar(const korvane::Value& text) override {
        Enter("Application.SetStatusBar").SetStatusBar(text);
    }
    void SetCursor(int cursor) override { Enter("Application.SetCursor").SetCursor(cursor); }
    void SetEnableEvents(bool enable) override {
        Enter("Application.SetEnableEvents").SetEnableEvents(enable);
    }
    bool ScreenUpdating() override { return Enter("Application.ScreenUpdating").ScreenUpdating(); }
    void SetScreenUpdating(bool update) override {
        Enter("Application.SetScreenUpdating").SetScreenUpdating(update);
    }
    int Calculation() override { return Enter("Application.Calculation").Calculation(); }
    void SetCalculation(int mode) override {
        Enter("Application.SetCalculation").SetCalculation(mode);
    }
    korvane::Value Evaluate(const std::u16string& expression) override {
        return WatchedOf(watch(), Enter("Application.Evaluate", expression).Evaluate(expression));
    }
    // Promises not to fail.
    std::shared_ptr<void> BeginEvaluations() override { return inner().BeginEvaluations(); }
    ObjectPtr Selection() override {
        return WatchedOf(watch(), Enter("Application.Selection").Selection());
    }
    host::RangePtr ActiveCell() override {
        return WatchedOf(watch(), Enter("Application.ActiveCell").ActiveCell());
    }
    host::CommandBarsPtr CommandBars() override {
        return Wrap<WatchedBars>(watch(), Enter("Application.CommandBars").CommandBars());
    }
    host::WorkbookPtr ThisWorkbook() override {
        return WatchedOf(watch(), Enter("Application.ThisWorkbook").ThisWorkbook());
    }
    void OnKey(const std::u16string& key, const std::u16string& procedure) override {
        Enter("Application.OnKey", key).OnKey(key, procedure);
    }
    void OnKey(const std::u16string& key) override { Enter("Application.OnKey", key).OnKey(key); }
    std::u16string DecimalSeparator() override {
        return Enter("Application.DecimalSeparator").DecimalSeparator();
    }
    std::u16string DateText(double serial) override {
        return Enter("Application.DateText").DateText(serial);
    }
    host::SubscriptionPtr Connect(host::ApplicationEvents& sink) override {
        auto& application = Enter("Application.Connect");
        return std::make_unique<WatchedSubscription<WindowSink>>(watch(), application, sink);
    }
};

}  // namespace

WatchedHost::WatchedHost(std::shared_ptr<scripted::Accesses> accesses)
    : accesses_(std::move(accesses)), liveHandles_(std::make_shared<int>(0)) {}

host::ApplicationPtr WatchedHost::Watch(host::ApplicationPtr application) const {
    return Wrap<WatchedApplication>({accesses_, liveHandles_}, std::move(application));
}

host::WorkbookPtr WatchedHost::Watch(host::WorkbookPtr workbook) const {
    return WatchedOf({accesses_, liveHandles_}, std::move(workbook));
}

}  // namespace korvane::test
