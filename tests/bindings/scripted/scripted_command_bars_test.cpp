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

TEST_F(CommandBarsTest, AClickReachesTheSinkOfEveryControlWithTheTag) {
    class Sink : public host::CommandBarButtonEvents {
    public:
        void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override {
            clicked.push_back(control->Parameter());
            cancelDefault = true;
        }
        std::vector<std::u16string> clicked;
    };
    Sink sink;
    auto bound = std::dynamic_pointer_cast<host::CommandBarButton>(AddButton(MenuBar(), u"tag"));
    const auto twin = AddButton(MenuBar(), u"tag");
    const auto other = AddButton(MenuBar(), u"other");
    twin->SetParameter(u"kvxTwin");
    auto subscription = bound->Connect(sink);
    bool cancel = false;
    host_->RaiseClick(twin, cancel);
    EXPECT_EQ(sink.clicked, (std::vector<std::u16string>{u"kvxTwin"}));
    EXPECT_TRUE(cancel);
    host_->RaiseClick(other, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
    subscription.reset();
    host_->RaiseClick(twin, cancel);
    EXPECT_EQ(sink.clicked.size(), 1U);
}

}  // namespace
}  // namespace korvane::scripted
