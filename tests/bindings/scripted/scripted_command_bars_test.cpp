#include "bindings/scripted/scripted_command_bars.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "host/constants.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class CommandBarsTest : public testing::Test {
protected:
    CommandBarsTest() : host_(test::HostWith("=B1")), bars_(host_->Application()->CommandBars()) {}
    ~CommandBarsTest() override {
        bars_.reset();
        EXPECT_EQ(host_->LiveHandles(), 0);
    }

    host::CommandBarControlsPtr MenuBar() { return bars_->Item(u"Worksheet Menu Bar")->Controls(); }
    static host::CommandBarControlPtr ById(const host::CommandBarControlsPtr& controls, int id) {
        for (int k = 1; k <= controls->Count(); ++k) {
            auto control = controls->Item(k);
            if (control->Id() == id) return control;
        }
        return nullptr;
    }
    static host::CommandBarControlPtr AddButton(const host::CommandBarControlsPtr& controls,
                                                const std::u16string& tag) {
        host::CommandBarControls::NewControl button{host::msoControlButton, 1, {}, {}, true};
        auto control = controls->Add(button);
        control->SetTag(tag);
        return control;
    }

    std::unique_ptr<ScriptedHost> host_;
    host::CommandBarsPtr bars_;
};

TEST_F(CommandBarsTest, HasTheMenuBarWithToolsAndTheAuditingSubmenu) {
    const auto tools = ById(MenuBar(), 30007);
    ASSERT_TRUE(tools);
    EXPECT_EQ(tools->Caption(), u"&Tools");
    EXPECT_TRUE(ById(tools->Controls(), 30028));
    EXPECT_NO_THROW(bars_->Item(u"formula auditing"));
    EXPECT_THROW(bars_->Item(u"Nope"), Error);
}

TEST_F(CommandBarsTest, AddsAControlAtItsPlace) {
    const auto controls = MenuBar();
    const int count = controls->Count();
    host::CommandBarControls::NewControl popup{host::msoControlPopup, 1, {}, 1, true};
    const auto first = controls->Add(popup);
    first->SetCaption(u"&Korvane");
    EXPECT_EQ(controls->Count(), count + 1);
    EXPECT_EQ(controls->Item(1)->Caption(), u"&Korvane");
    EXPECT_EQ(first->TypeName(), u"CommandBarPopup");
    const auto button = AddButton(first->Controls(), u"tag");
    EXPECT_EQ(button->TypeName(), u"CommandBarButton");
    EXPECT_EQ(button->Id(), 1);
    EXPECT_THROW(button->Controls(), Error) << "a button has no controls of its own";
    popup.before = 99;
    EXPECT_THROW(controls->Add(popup), Error);
    EXPECT_THROW(controls->Item(0), Error);
    EXPECT_THROW(controls->Item(99), Error);
}

TEST_F(CommandBarsTest, AControlKeepsWhatIsPut) {
    host::CommandBarControls::NewControl button{host::msoControlButton, 1, u"kvxExplore", {}, true};
    const auto added = std::dynamic_pointer_cast<host::CommandBarButton>(MenuBar()->Add(button));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->Parameter(), u"kvxExplore");
    added->SetTag(u"t");
    added->SetBeginGroup(true);
    added->SetVisible(false);
    added->SetStyle(1);
    added->SetPicture("picture");
    added->SetMask("mask");
    const auto& data = *host_->bars()->children[0]->children.back();
    EXPECT_EQ(data.tag, u"t");
    EXPECT_TRUE(data.beginGroup);
    EXPECT_FALSE(data.visible);
    EXPECT_TRUE(data.temporary);
    EXPECT_EQ(data.style, 1);
    EXPECT_EQ(data.picture, "picture");
    EXPECT_EQ(data.mask, "mask");
}

TEST_F(CommandBarsTest, FindsTheFirstControlWithATag) {
    EXPECT_EQ(bars_->FindControl(u"tag"), nullptr);
    AddButton(bars_->Item(u"Formula Auditing")->Controls(), u"tag")->SetCaption(u"second");
    AddButton(MenuBar(), u"tag")->SetCaption(u"first");
    EXPECT_EQ(bars_->FindControl(u"tag")->Caption(), u"first");
    bars_->FindControl(u"tag")->Delete();
    EXPECT_EQ(bars_->FindControl(u"tag")->Caption(), u"second");
}

TEST_F(CommandBarsTest, ADeletedControlAnswersNoMore) {
    const auto control = AddButton(MenuBar(), u"tag");
    control->Delete();
    EXPECT_THROW(control->Caption(), Error);
    EXPECT_THROW(control->Delete(), Error);
    EXPECT_EQ(bars_->FindControl(u"tag"), nullptr);
}

TEST_F(CommandBarsTest, DeletingASubmenuDeletesAllBelow) {
    const auto menu = MenuBar();
    const auto popup = menu->Add({host::msoControlPopup, 1, {}, {}, true});
    const auto controls = popup->Controls();
    const auto inner = controls->Add({host::msoControlPopup, 1, {}, {}, true});
    const auto innerControls = inner->Controls();
    const auto button = AddButton(innerControls, u"tag");
    popup->Delete();
    const auto gone = [](const auto& call) {
        try {
            call();
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    };
    EXPECT_EQ(gone([&] { button->Caption(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { button->Delete(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { inner->Caption(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { inner->Controls(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { innerControls->Count(); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { controls->Item(1); }), kErrorObjectGone);
    EXPECT_EQ(gone([&] { AddButton(controls, u"tag"); }), kErrorObjectGone);
    EXPECT_EQ(bars_->FindControl(u"tag"), nullptr);
    EXPECT_NO_THROW(menu->Count()) << "what it stood in goes on";
}

TEST_F(CommandBarsTest, ToolbarsAndMenusListTheirControls) {
    const auto toolbar = bars_->Item(u"Formula Auditing")->Controls();
    EXPECT_EQ(toolbar->Count(), 0);
    AddButton(toolbar, u"one");
    AddButton(toolbar, u"two");
    EXPECT_EQ(toolbar->Count(), 2);
    EXPECT_EQ(toolbar->Item(2)->Tag(), u"two");
    const auto tools = ById(MenuBar(), 30007)->Controls();
    EXPECT_EQ(tools->Count(), 2);
    EXPECT_EQ(tools->Item(1)->Caption(), u"&Spelling...");
    tools->Item(1)->Delete();
    EXPECT_EQ(tools->Item(1)->Caption(), u"Formula A&uditing");
}

TEST_F(CommandBarsTest, ASubmenuIsNoButton) {
    const auto popup = MenuBar()->Add({host::msoControlPopup, 1, {}, {}, true});
    EXPECT_EQ(std::dynamic_pointer_cast<host::CommandBarButton>(popup), nullptr);
    popup->SetCaption(u"&Korvane");
    popup->SetTag(u"tag");
    EXPECT_EQ(bars_->FindControl(u"tag")->Caption(), u"&Korvane");
}

TEST_F(CommandBarsTest, WritesAllBarsAsText) {
    const std::string before = host_->BarsText();
    EXPECT_EQ(before, R"(Worksheet Menu Bar
  &File id=30002
  &Tools id=30007
    &Spelling... id=2
    Formula A&uditing id=30028
      &Trace Precedents id=486
      Formula Auditing &Toolbar id=892
Formula Auditing
)");
    const auto popup = MenuBar()->Add({host::msoControlPopup, 1, u"p", 2, true});
    popup->SetCaption(u"&Korvane");
    popup->SetVisible(false);
    const auto button = AddButton(popup->Controls(), u"t");
    button->SetBeginGroup(true);
    std::dynamic_pointer_cast<host::CommandBarButton>(button)->SetStyle(1);
    bars_->Item(u"Formula Auditing")->Controls()->Add({host::msoControlButton, 4, {}, {}, false});
    EXPECT_EQ(host_->BarsText(), R"(Worksheet Menu Bar
  &File id=30002
  &Korvane id=1 parameter=p hidden temporary
     id=1 tag=t group style=1 temporary
  &Tools id=30007
    &Spelling... id=2
    Formula A&uditing id=30028
      &Trace Precedents id=486
      Formula Auditing &Toolbar id=892
Formula Auditing
   id=4
)");
    popup->Delete();
    bars_->Item(u"Formula Auditing")->Controls()->Item(1)->Delete();
    EXPECT_EQ(host_->BarsText(), before);
}

class ClickSink : public host::CommandBarButtonEvents {
public:
    void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override {
        clicked.push_back(control->Parameter());
        cancelDefault = true;
        if (lets) lets->reset();
    }
    std::vector<std::u16string> clicked;
    host::SubscriptionPtr* lets = nullptr;  // let go of when clicked
};

host::SubscriptionPtr Bind(const host::CommandBarControlPtr& control, ClickSink& sink) {
    return std::dynamic_pointer_cast<host::CommandBarButton>(control)->Connect(sink);
}

TEST_F(CommandBarsTest, AClickReachesTheSinkOfEveryControlWithTheTag) {
    ClickSink sink;
    const auto bound = AddButton(MenuBar(), u"tag");
    const auto twin = AddButton(MenuBar(), u"tag");
    const auto other = AddButton(MenuBar(), u"other");
    twin->SetParameter(u"kvxTwin");
    auto subscription = Bind(bound, sink);
    bool cancel = false;
    host_->RaiseClick(twin, cancel);
    EXPECT_EQ(sink.clicked, (std::vector<std::u16string>{u"kvxTwin"}));
    EXPECT_TRUE(cancel);
    host_->RaiseClick(other, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
    const int handles = host_->LiveHandles();
    subscription.reset();
    EXPECT_EQ(host_->LiveHandles(), handles - 1) << "a subscription is a handle";
    host_->RaiseClick(twin, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
}

TEST_F(CommandBarsTest, ASinkIsDeafWhenItsControlIsDeleted) {
    ClickSink sink;
    bool cancel = false;
    const auto popup = MenuBar()->Add({host::msoControlPopup, 1, {}, {}, true});
    const auto bound = AddButton(popup->Controls(), u"tag");
    const auto twin = AddButton(MenuBar(), u"tag");
    const auto subscription = Bind(bound, sink);
    popup->Delete();
    host_->RaiseClick(twin, cancel);
    EXPECT_TRUE(sink.clicked.empty()) << "it was bound to the one that is gone";
    const auto second = Bind(twin, sink);
    host_->RaiseClick(bound, cancel);
    EXPECT_TRUE(sink.clicked.empty()) << "nobody can click what is gone";
    EXPECT_THROW(Bind(bound, sink), Error);
    host_->RaiseClick(twin, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
}

TEST_F(CommandBarsTest, ASubscriptionTakesThePlaceOfAnotherOfTheSameSink) {
    ClickSink sink;
    bool cancel = false;
    const auto button = AddButton(MenuBar(), u"tag");
    auto subscription = Bind(button, sink);
    subscription = Bind(button, sink);
    host_->RaiseClick(button, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
}

TEST_F(CommandBarsTest, ASinkThatWasLetGoMeanwhileHearsNothing) {
    ClickSink one;
    ClickSink two;
    bool cancel = false;
    const auto button = AddButton(MenuBar(), u"tag");
    auto first = Bind(button, one);
    auto second = Bind(button, two);
    one.lets = &second;
    two.lets = &first;
    host_->RaiseClick(button, cancel);
    EXPECT_EQ(one.clicked.size() + two.clicked.size(), 1U);
}

TEST_F(CommandBarsTest, AClickIsNoAccess) {
    class Sink : public host::CommandBarButtonEvents {
    public:
        void Click(const host::CommandBarButtonPtr&, bool&) override { ++clicks; }
        int clicks = 0;
    };
    Sink sink;
    bool cancel = false;
    const auto button = AddButton(MenuBar(), u"tag");
    const auto subscription =
        std::dynamic_pointer_cast<host::CommandBarButton>(button)->Connect(sink);
    const auto calls = host_->calls();
    host_->FailNthCall(1);
    EXPECT_NO_THROW(host_->RaiseClick(button, cancel));
    EXPECT_EQ(sink.clicks, 1);
    EXPECT_EQ(host_->calls(), calls);
}

}  // namespace
}  // namespace korvane::scripted
