#include "contract/desk_contract.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"
#include "host/command_bars.h"
#include "host/constants.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane::test {
namespace {

using Texts = std::vector<std::u16string>;
using host::CommandBarControlPtr;
using host::CommandBarControlsPtr;

constexpr const char16_t* kMenuBar = u"Worksheet Menu Bar";
constexpr const char16_t* kToolbar = u"Formula Auditing";

class ClickSink : public host::CommandBarButtonEvents {
public:
    void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override {
        clicked.push_back(control->Parameter());
        cancelDefault = true;
        if (lets != nullptr) lets->reset();
    }
    Texts clicked;
    host::SubscriptionPtr* lets = nullptr;  // let go of when clicked
};

class WindowSink : public host::ApplicationEvents {
public:
    void WindowActivate(const host::WorkbookPtr& workbook) override {
        if (names.empty() || names.back() != workbook->Name()) names.push_back(workbook->Name());
        if (lets != nullptr) lets->reset();
    }
    Texts names;  // each once, however often its window came
    host::SubscriptionPtr* lets = nullptr;
};

class DeskContract : public testing::Test {
protected:
    DeskContract() : host_(MakeDeskContractHost()) { host_->Select(u"Data!A1"); }

    host::Application& app() { return host_->application(); }
    std::string Active() { return ToUtf8(app().ActiveCell()->Address(host::kExternal)); }
    // The selection's address; or what it is otherwise.
    std::string Selection() {
        const ObjectPtr selection = app().Selection();
        if (!selection) return "nothing";
        const auto range = std::dynamic_pointer_cast<host::Range>(selection);
        return range ? ToUtf8(range->Address(host::kRelative)) : ToUtf8(selection->TypeName());
    }
    CommandBarControlsPtr Bar(const char16_t* name) {
        return app().CommandBars()->Item(name)->Controls();
    }
    static CommandBarControlPtr ById(host::CommandBarControls& controls, int id) {
        for (int k = 1; k <= controls.Count(); ++k) {
            auto control = controls.Item(k);
            if (control->Id() == id) return control;
        }
        throw Error(kErrorObjectMissing, u"There is no such control");
    }
    CommandBarControlsPtr Tools() { return ById(*Bar(kMenuBar), 30007)->Controls(); }
    static CommandBarControlPtr AddButton(host::CommandBarControls& controls,
                                          const char16_t* caption, const char16_t* parameter,
                                          std::optional<int> before = {}) {
        auto button = controls.Add({host::msoControlButton, 1, parameter, before, true});
        button->SetCaption(caption);
        button->SetTag(u"tag");
        return button;
    }
    static CommandBarControlPtr AddMenu(host::CommandBarControls& controls) {
        auto menu = controls.Add({host::msoControlPopup, 1, {}, {}, true});
        menu->SetCaption(u"Own &menu");
        return menu;
    }
    static host::SubscriptionPtr Bind(const CommandBarControlPtr& control, ClickSink& sink) {
        return std::dynamic_pointer_cast<host::CommandBarButton>(control)->Connect(sink);
    }
    // The number of the failure; 0 for none.
    template <class Call>
    static int Failure(Call&& call) {
        try {
            call();
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    }

    std::unique_ptr<DeskContractHost> host_;
};

// ---- where the user is ---------------------------------------------------------

TEST_F(DeskContract, TheSelectionIsWhatTheUserSelected) {
    host_->Select(u"Data!B2");
    EXPECT_EQ(Selection(), "B2");
    host_->Select(u"Data!B2:C3");
    EXPECT_EQ(Selection(), "B2:C3");
    EXPECT_EQ(app().Selection()->TypeName(), u"Range");
    host_->Select(u"'My Sheet'!A2");
    EXPECT_EQ(Selection(), "A2");
    host_->SelectDrawing();
    EXPECT_EQ(std::dynamic_pointer_cast<host::Range>(app().Selection()), nullptr);
    EXPECT_NE(app().Selection(), nullptr);
}

TEST_F(DeskContract, TheActiveCellIsWhereTheUserOrTheAddinWentLast) {
    host_->Select(u"Data!B2");
    EXPECT_EQ(Active(), "[Contract.fods]Data!$B$2");
    host_->Cells(u"Data!C3")->Select();
    EXPECT_EQ(Active(), "[Contract.fods]Data!$C$3");
    EXPECT_EQ(Selection(), "C3");
    EXPECT_EQ(host_->Selected(), "[Contract.fods]Data!$C$3");
    host_->Select(u"'My Sheet'!A2");
    EXPECT_EQ(Active(), "'[Contract.fods]My Sheet'!$A$2");
    host_->Cells(u"Data!A1")->Worksheet()->Activate();
    host_->Cells(u"Data!A1:B3")->Select();
    EXPECT_EQ(Active(), "[Contract.fods]Data!$A$1") << "the first cell";
    EXPECT_EQ(Selection(), "A1:B3");
    EXPECT_EQ(host_->Selected(), "[Contract.fods]Data!$A$1:$B$3");
    host_->Cells(u"Data!B3")->Activate();
    EXPECT_EQ(Active(), "[Contract.fods]Data!$B$3");
}

TEST_F(DeskContract, AnotherWorkbookIsActivatedByTheUserAndByTheAddin) {
    const auto cell = host_->Cells(u"Data!B2");
    cell->Select();
    host_->GoTo(u"Second.fods");
    const std::string there = Active();
    EXPECT_TRUE(there.starts_with("[Second.fods]Only!")) << there;
    cell->Worksheet()->Parent()->Activate();
    cell->Worksheet()->Activate();
    cell->Select();
    EXPECT_EQ(Active(), "[Contract.fods]Data!$B$2");
    EXPECT_EQ(Selection(), "B2");
    EXPECT_EQ(host_->Selected(), "[Contract.fods]Data!$B$2");
}

TEST_F(DeskContract, ThereIsAWindowWithATitle) {
    EXPECT_NE(app().Hwnd(), 0);
    EXPECT_NE(app().Caption(), u"");
}

// ---- what he is shown ----------------------------------------------------------

TEST_F(DeskContract, TheStatusBarShowsATextUntilItIsHandedBack) {
    const std::string own = host_->StatusBar();
    app().SetStatusBar(Value(u"Exploring, please wait..."));
    const std::string exploring = host_->StatusBar();
    EXPECT_NE(exploring, own);
    app().SetStatusBar(Value(u"Still exploring"));
    EXPECT_NE(host_->StatusBar(), own);
    EXPECT_NE(host_->StatusBar(), exploring);
    app().SetStatusBar(Value(u"Exploring, please wait..."));
    EXPECT_EQ(host_->StatusBar(), exploring);
    app().SetStatusBar(Value(false));
    EXPECT_EQ(host_->StatusBar(), own);
    app().SetStatusBar(Value(false));
    EXPECT_EQ(host_->StatusBar(), own);
}

TEST_F(DeskContract, AFillStaysWhereverTheUserGoes) {
    const auto interior = host_->Cells(u"Data!B2")->Interior();
    interior->SetColorIndex(Value(33));
    host_->Select(u"'My Sheet'!A1");
    host_->GoTo(u"Second.fods");
    EXPECT_EQ(*interior->ColorIndex().Number(), 33);
    interior->SetColorIndex(Value(-4142));
    host_->GoTo(u"Contract.fods");
    EXPECT_EQ(*interior->ColorIndex().Number(), -4142);
}

// ---- events --------------------------------------------------------------------

TEST_F(DeskContract, ASinkIsToldOfActivatedWindowsUntilItLetsGo) {
    WindowSink sink;
    auto subscription = app().Connect(sink);
    host_->GoTo(u"Second.fods");
    host_->GoTo(u"Contract.fods");
    EXPECT_EQ(sink.names, (Texts{u"Second.fods", u"Contract.fods"}));
    subscription.reset();
    host_->GoTo(u"Second.fods");
    EXPECT_EQ(sink.names.size(), 2U);
}

TEST_F(DeskContract, NobodyIsToldOfAnythingWhileEventsAreOff) {
    WindowSink sink;
    const auto subscription = app().Connect(sink);
    app().SetEnableEvents(false);
    host_->GoTo(u"Second.fods");
    EXPECT_EQ(sink.names, Texts());
    app().SetEnableEvents(true);
    host_->GoTo(u"Contract.fods");
    EXPECT_EQ(sink.names, Texts{u"Contract.fods"});
}

TEST_F(DeskContract, ASinkThatWasLetGoMeanwhileHearsNothing) {
    WindowSink one;
    WindowSink two;
    auto first = app().Connect(one);
    auto second = app().Connect(two);
    one.lets = &second;
    two.lets = &first;
    host_->GoTo(u"Second.fods");
    EXPECT_EQ(one.names.size() + two.names.size(), 1U);
}

// ---- keys ----------------------------------------------------------------------

TEST_F(DeskContract, AKeyRunsItsProcedureUntilItIsGivenBack) {
    app().OnKey(u"^%j", u"First");
    app().OnKey(u"^%k", u"Second");
    host_->Press(u"^%j");
    host_->Press(u"^%k");
    EXPECT_EQ(host_->ran(), (Texts{u"First", u"Second"}));
    app().OnKey(u"^%j", u"Third");
    host_->Press(u"^%j");
    EXPECT_EQ(host_->ran().back(), u"Third");
    app().OnKey(u"^%j");
    app().OnKey(u"^%j");  // it is the host's already
    host_->Press(u"^%j");
    host_->Press(u"^%k");
    EXPECT_EQ(host_->ran(), (Texts{u"First", u"Second", u"Third", u"Second"}));
}

TEST_F(DeskContract, KeysAreGivenBackWhenTheApplicationIsLetGo) {
    app().OnKey(u"^%l", u"First");
    host_->Press(u"^%l");
    host_->EndApplication();
    host_->Press(u"^%l");
    EXPECT_EQ(host_->ran(), Texts{u"First"});
}

// ---- menus and buttons ------------------------------------------------------------

TEST_F(DeskContract, TheBarsThatTheAddinGoesToAreThere) {
    EXPECT_NO_THROW(ById(*Tools(), 30028)->Controls()->Count());
    EXPECT_NO_THROW(app().CommandBars()->Item(u"formula auditing")->Controls()->Count());
    EXPECT_THROW(app().CommandBars()->Item(u"Nope"), Error);
    EXPECT_EQ(app().CommandBars()->FindControl(u"tag"), nullptr);
    EXPECT_EQ(host_->Added(kMenuBar), Texts());
    EXPECT_EQ(host_->Added(kToolbar), Texts());
}

TEST_F(DeskContract, AControlIsAddedAtItsPlace) {
    const auto tools = Tools();
    const int count = tools->Count();
    ASSERT_GE(count, 1);
    AddButton(*tools, u"Last", u"kvxLast");
    AddButton(*tools, u"First", u"kvxFirst", 1);
    AddButton(*tools, u"Second", u"kvxSecond", 2);
    EXPECT_EQ(tools->Count(), count + 3);
    EXPECT_EQ(tools->Item(1)->Caption(), u"First");
    EXPECT_EQ(tools->Item(2)->Caption(), u"Second");
    EXPECT_EQ(tools->Item(count + 3)->Caption(), u"Last");
    EXPECT_EQ(host_->Added(kMenuBar), (Texts{u"First", u"Second", u"Last"}));
    EXPECT_THROW(AddButton(*tools, u"Beyond", u"kvxBeyond", count + 5), Error);
    EXPECT_THROW(AddButton(*tools, u"Before", u"kvxBefore", 0), Error);
    EXPECT_THROW(tools->Item(0), Error);
    EXPECT_THROW(tools->Item(count + 4), Error);
    EXPECT_EQ(tools->Count(), count + 3);
}

TEST_F(DeskContract, AControlKeepsWhatIsPut) {
    const auto control = AddButton(*Bar(kToolbar), u"E&xplore", u"kvxExplore");
    const auto button = std::dynamic_pointer_cast<host::CommandBarButton>(control);
    ASSERT_TRUE(button);
    EXPECT_EQ(button->TypeName(), u"CommandBarButton");
    EXPECT_EQ(button->Id(), 1);
    EXPECT_EQ(button->Caption(), u"E&xplore");
    EXPECT_EQ(button->Tag(), u"tag");
    EXPECT_EQ(button->Parameter(), u"kvxExplore");
    button->SetParameter(u"kvxOther");
    EXPECT_EQ(button->Parameter(), u"kvxOther");
    button->SetBeginGroup(true);
    button->SetStyle(host::msoButtonIcon);
    EXPECT_THROW(button->Controls(), Error);
    EXPECT_EQ(Bar(kToolbar)->Item(Bar(kToolbar)->Count())->Parameter(), u"kvxOther");
    EXPECT_EQ(host_->Added(kToolbar), Texts{u"E&xplore"});
}

TEST_F(DeskContract, ASubmenuHasControlsAndIsNoButton) {
    const auto menu = AddMenu(*Tools());
    EXPECT_EQ(menu->TypeName(), u"CommandBarPopup");
    EXPECT_EQ(std::dynamic_pointer_cast<host::CommandBarButton>(menu), nullptr);
    EXPECT_EQ(menu->Controls()->Count(), 0);
    AddButton(*menu->Controls(), u"&Inside", u"kvxInside");
    EXPECT_EQ(menu->Controls()->Count(), 1);
    EXPECT_EQ(menu->Controls()->Item(1)->Caption(), u"&Inside");
    EXPECT_EQ(host_->Added(kMenuBar), (Texts{u"Own &menu", u"&Inside"}));
}

TEST_F(DeskContract, TheFirstControlWithATagIsFound) {
    AddButton(*Bar(kToolbar), u"On the toolbar", u"third");
    AddButton(*Tools(), u"In the menu", u"second");
    AddButton(*Tools(), u"At the top", u"first", 1);
    for (const char16_t* parameter : {u"first", u"second", u"third"}) {
        const auto found = app().CommandBars()->FindControl(u"tag");
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->Parameter(), parameter);
        found->Delete();
    }
    EXPECT_EQ(app().CommandBars()->FindControl(u"tag"), nullptr);
    EXPECT_EQ(host_->Added(kMenuBar), Texts());
}

TEST_F(DeskContract, ADeletedControlAnswersNoMore) {
    const auto menu = AddMenu(*Tools());
    const auto inside = menu->Controls();
    const auto inner = AddMenu(*inside);
    const auto innerControls = inner->Controls();
    const auto button = AddButton(*innerControls, u"Inside", u"kvxInside");
    menu->Delete();
    EXPECT_EQ(Failure([&] { menu->Caption(); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { button->Caption(); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { button->SetCaption(u"x"); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { button->Delete(); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { inner->Controls(); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { innerControls->Count(); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { inside->Item(1); }), kErrorObjectGone);
    EXPECT_EQ(Failure([&] { AddButton(*inside, u"x", u"x"); }), kErrorObjectGone);
    ClickSink sink;
    EXPECT_EQ(Failure([&] { Bind(button, sink); }), kErrorObjectGone);
    EXPECT_EQ(app().CommandBars()->FindControl(u"tag"), nullptr);
    EXPECT_EQ(host_->Added(kMenuBar), Texts());
    EXPECT_NO_THROW(Tools()->Count());
}

TEST_F(DeskContract, AClickReachesTheSinkOfEveryControlWithTheTag) {
    ClickSink sink;
    const auto bound = AddButton(*Tools(), u"Bound", u"kvxBound");
    AddButton(*Bar(kToolbar), u"Twin", u"kvxTwin");
    AddButton(*Tools(), u"Other", u"kvxOther")->SetTag(u"other");
    auto subscription = Bind(bound, sink);
    host_->Click(u"Twin");
    host_->Click(u"Other");
    host_->Click(u"Bound");
    EXPECT_EQ(sink.clicked, (Texts{u"kvxTwin", u"kvxBound"}));
    subscription = Bind(bound, sink);  // takes the place of the one before
    host_->Click(u"Twin");
    EXPECT_EQ(sink.clicked.size(), 3U);
    subscription.reset();
    host_->Click(u"Twin");
    EXPECT_EQ(sink.clicked.size(), 3U);
}

TEST_F(DeskContract, ASinkIsDeafWhenItsControlIsDeleted) {
    ClickSink sink;
    const auto menu = AddMenu(*Tools());
    const auto bound = AddButton(*menu->Controls(), u"Bound", u"kvxBound");
    const auto twin = AddButton(*Tools(), u"Twin", u"kvxTwin");
    const auto subscription = Bind(bound, sink);
    menu->Delete();
    host_->Click(u"Twin");
    EXPECT_EQ(sink.clicked, Texts()) << "it was bound to the one that is gone";
    const auto second = Bind(twin, sink);
    host_->Click(u"Bound");
    EXPECT_EQ(sink.clicked, Texts()) << "nobody can click what is gone";
    host_->Click(u"Twin");
    EXPECT_EQ(sink.clicked, Texts{u"kvxTwin"});
}

TEST_F(DeskContract, AClickSinkThatWasLetGoMeanwhileHearsNothing) {
    ClickSink one;
    ClickSink two;
    const auto button = AddButton(*Tools(), u"Bound", u"kvxBound");
    auto first = Bind(button, one);
    auto second = Bind(button, two);
    one.lets = &second;
    two.lets = &first;
    host_->Click(u"Bound");
    EXPECT_EQ(one.clicked.size() + two.clicked.size(), 1U);
}

}  // namespace
}  // namespace korvane::test
