#include "navigation/form_resizer.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/scripted/scripted_platform.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using platform::Place;

class FormResizerTest : public testing::Test {
protected:
    ~FormResizerTest() override { application_.reset(); }

    // A dialog of 6000 × 4000 with a label per tag at 1000, 1000 of 500 × 300.
    void Make(std::initializer_list<const char16_t*> tags) {
        platform::FormDesign design;
        design.name = u"FDialog";
        design.place = {100, 200, 6000, 4000};
        for (const auto* tag : tags) {
            platform::ControlDesign control;
            control.name = tag;
            control.tag = tag;
            control.place = {1000, 1000, 500, 300};
            design.controls.push_back(control);
        }
        form_ = platform_.windows.Load(design);
        form_->onResize = [this] { resizer_.FormResize(); };
    }
    void HandOver() { resizer_.SetForm(*form_); }
    void Drag(float width, float height) {
        platform_.windows.Deliver(
            platform::FormPlaced{form_->Id(), {form_->Left(), form_->Top(), width, height}});
    }
    const Place& At(std::size_t control) { return form_->Controls()[control]->GetPlace(); }
    std::u16string& Stored() {
        return platform_.settings.texts[{u"Korvane", u"Korvane Explorer", u"FDialog"}];
    }

    std::unique_ptr<scripted::ScriptedHost> host_ = test::HostWith("=1");
    scripted::ScriptedPlatform platform_{host_->sharedAccesses()};
    host::ApplicationPtr application_ = host_->Application();
    std::unique_ptr<platform::Form> form_;
    CFormResizer resizer_{platform_.settings, platform_.screen, *application_};
};

TEST_F(FormResizerTest, ControlsFollowTheirTags) {
    Make({u"T", u"L", u"H", u"W", u"tl", u"L0.5W0.5", u"W0.5H", u"", u"T0", u"W-1"});
    HandOver();
    Drag(6200, 4100);
    EXPECT_EQ(At(0), (Place{1000, 1100, 500, 300}));
    EXPECT_EQ(At(1), (Place{1200, 1000, 500, 300}));
    EXPECT_EQ(At(2), (Place{1000, 1000, 500, 400}));
    EXPECT_EQ(At(3), (Place{1000, 1000, 700, 300}));
    EXPECT_EQ(At(4), (Place{1200, 1100, 500, 300}));
    EXPECT_EQ(At(5), (Place{1100, 1000, 600, 300}));
    EXPECT_EQ(At(6), (Place{1000, 1000, 600, 400}));
    EXPECT_EQ(At(7), (Place{1000, 1000, 500, 300}));
    EXPECT_EQ(At(8), (Place{1000, 1100, 500, 300}));
    EXPECT_EQ(At(9), (Place{1000, 1000, 300, 300}));
}

TEST_F(FormResizerTest, ControlsComeBackToWhereTheyWere) {
    Make({u"TL", u"W0.5H0.5"});
    HandOver();
    const Place before = At(0);
    Drag(7001, 5003);
    Drag(6000, 4000);
    EXPECT_EQ(At(0), before);
    EXPECT_EQ(At(1), (Place{1000, 1000, 500, 300}));
}

TEST_F(FormResizerTest, FractionsOfTwipsDoNotAddUp) {
    Make({u"TL", u"HW"});
    form_->SetHeight(4000.3F);
    HandOver();
    for (int k = 1; k <= 400; ++k) Drag(6000 + static_cast<float>(k) * 0.7F, 4000.3F);
    EXPECT_EQ(At(0).top, 1000);
    EXPECT_EQ(At(0).left, 1280);
    Drag(6000, 4000.3F);
    EXPECT_EQ(At(0), (Place{1000, 1000, 500, 300}));
    EXPECT_EQ(At(1), (Place{1000, 1000, 500, 300}));
}

TEST_F(FormResizerTest, ASizeThatNoWindowHasIsNoBounds) {
    Make({u"TL"});
    for (const auto* odd : {u"0;0;2147483647;2147483647", u"0;0;0;0", u"0;0;-5;100"}) {
        Stored() = odd;
        HandOver();
        EXPECT_EQ(form_->GetPlace(), (Place{100, 200, 6000, 4000}));
    }
}

TEST_F(FormResizerTest, ASizeThatLeavesAControlNoPlaceIsTakenBack) {
    Make({u"TL", u"HW"});
    HandOver();
    Drag(5800, 3900);
    const Place accepted = At(0);
    Drag(4800, 3900);  // the left edge would be at 0
    EXPECT_EQ(form_->Width(), 5800);
    EXPECT_EQ(At(0), accepted);
    Drag(5800, 3600);  // the height would be 0
    EXPECT_EQ(form_->Height(), 3900);
    Drag(4000, 3000);
    EXPECT_EQ(form_->Width(), 5800);
    EXPECT_EQ(form_->Height(), 3900);
    Drag(5700, 3000);  // one direction is taken back, the other kept
    EXPECT_EQ(form_->Width(), 5700);
    EXPECT_EQ(form_->Height(), 3900);
}

TEST_F(FormResizerTest, WithoutAnAnchorADirectionIsFixed) {
    Make({u"LW", u""});
    HandOver();
    Drag(6300, 4400);
    EXPECT_EQ(form_->Height(), 4000);
    EXPECT_EQ(form_->Width(), 6300);
    Make({u"th"});
    HandOver();
    Drag(6300, 4400);
    EXPECT_EQ(form_->Height(), 4400);
    EXPECT_EQ(form_->Width(), 6000);
}

TEST_F(FormResizerTest, TheDialogGetsAFrameToDrag) {
    Make({u"TL"});
    EXPECT_FALSE(form_->Resizable());
    HandOver();
    EXPECT_TRUE(form_->Resizable());
}

TEST_F(FormResizerTest, AFrameThatIsRefusedDoesNotMatter) {
    Make({u"TL"});
    host_->FailMember("Form.SetResizable");
    Stored() = u"150;150;5000;7000";
    HandOver();
    EXPECT_EQ(form_->GetPlace(), (Place{150, 150, 7000, 5000}));
}

TEST_F(FormResizerTest, AnEmptyEntryLeavesTheDesign) {
    Make({u"TL"});
    HandOver();
    EXPECT_EQ(form_->GetPlace(), (Place{100, 200, 6000, 4000}));
    EXPECT_TRUE(platform_.settings.writes.empty());
}

TEST_F(FormResizerTest, TheStoredSizeIsAppliedAndTheControlsFollow) {
    Make({u"TL"});
    Stored() = u"1200;300;5000;7000";
    HandOver();
    EXPECT_EQ(form_->GetPlace(), (Place{300, 1200, 7000, 5000}));
    EXPECT_EQ(At(0), (Place{2000, 2000, 500, 300}));
}

TEST_F(FormResizerTest, EveryResizeIsStored) {
    Make({u"TL"});
    HandOver();
    Drag(6500, 4500);
    EXPECT_EQ(Stored(), u"200;100;4500;6500");
}

TEST_F(FormResizerTest, AStoredTextThatIsNoBoundsRaises) {
    Make({u"TL"});
    for (const auto* odd : {u"x", u"1;2;3", u"1;2;3;?"}) {
        Stored() = odd;
        EXPECT_THROW(HandOver(), Error);
    }
}

TEST_F(FormResizerTest, OtherFailuresLeaveTheDialogAsDesignedAndUsable) {
    for (int nth = 2;; ++nth) {
        Make({u"TL"});
        Stored() = u"1200;300;5000;7000";
        host_->FailNothing();
        host_->FailNthCall(nth);
        HandOver();
        if (host_->lastFailure().empty()) break;
        host_->FailNothing();
        Drag(6100, 4100);
        EXPECT_EQ(form_->Width(), 6100) << nth;
        ASSERT_LT(nth, 50);
    }
}

TEST_F(FormResizerTest, BoundsThatCannotBeStoredAreNoFailure) {
    Make({u"TL"});
    HandOver();
    host_->FailMember("SettingsStore.Save");
    Drag(6500, 4500);
    EXPECT_EQ(form_->Width(), 6500);
    EXPECT_EQ(At(0).left, 1500);
}

TEST_F(FormResizerTest, WithinItselfAndBeforeTheHandOverItDoesNothing) {
    resizer_.FormResize();
    Make({u"TL"});
    int inner = 0;
    form_->onResize = [&] {
        ++inner;
        resizer_.FormResize();
    };
    HandOver();
    Drag(4900, 4000);  // taken back: the window is resized within
    EXPECT_EQ(inner, 2);
    EXPECT_EQ(At(0), (Place{1000, 1000, 500, 300}));
}

}  // namespace
}  // namespace korvane
