#include "bindings/qt/owners.h"

#include <gtest/gtest.h>

#include "bindings/qt/shown_form.h"

namespace korvane::test {
namespace {

using platform::MessageButtons;
using platform::MessageIcon;

// Two windows, and one that stays above the first of them.
struct ThreeForms : ShownForm {
    ThreeForms() {
        second->Show();
        above->SetOwner(form->Handle());
        above->Show();
        Turn();
    }
    QWindow* On(const platform::Form& one) { return view.Find(one.Id())->windowHandle(); }
    void WaitFor(platform::Form& one) {
        view.Apply(platform::PropertySet{one.Id(), 0, platform::Property::kShown,
                                         static_cast<std::int32_t>(platform::Shown::kModal)});
        Turn();
    }

    std::unique_ptr<platform::Form> second = windows.Load(SmallExplorer());
    std::unique_ptr<platform::Form> above = windows.Load(SmallExplorer());
};

TEST(QtOwners, AWindowThatIsSeenGetsAnotherOwner) {
    ThreeForms forms;
    ASSERT_EQ(forms.On(*forms.above)->transientParent(), forms.On(*forms.form));
    forms.above->SetOwner(forms.second->Handle());
    ShownForm::Turn();
    EXPECT_EQ(forms.On(*forms.above)->transientParent(), forms.On(*forms.second));
    EXPECT_TRUE(forms.above->IsShown());
}

TEST(QtOwners, WindowsNeverOwnEachOther) {
    ThreeForms forms;
    forms.form->SetOwner(forms.above->Handle());
    ShownForm::Turn();
    EXPECT_EQ(forms.On(*forms.form)->transientParent(), nullptr);
    EXPECT_EQ(forms.On(*forms.above)->transientParent(), forms.On(*forms.form));
}

TEST(QtOwners, WhatWaitsComesAboveTheWindowWhereTheUserTriedToGoOn) {
    ThreeForms forms;
    const auto dialog = forms.windows.Load(SmallExplorer());
    dialog->SetOwner(forms.form->Handle());
    forms.WaitFor(*dialog);
    ASSERT_EQ(forms.On(*dialog)->transientParent(), forms.On(*forms.form));
    // A question within the dialog stays above that.
    forms.view.Find(dialog->Id())->activateWindow();
    ShownForm::Turn();
    forms.view.Ask({1, u"Really?", u"Title", MessageIcon::kQuestion, MessageButtons::kYesNo});
    ShownForm::Turn();
    QWindow* const question = forms.view.FindMessage(1)->windowHandle();
    ASSERT_EQ(question->transientParent(), forms.On(*dialog));
    forms.view.WantAnswer({forms.second->Handle()});
    ShownForm::Turn();
    EXPECT_EQ(question->transientParent(), forms.On(*dialog));
    EXPECT_EQ(forms.On(*dialog)->transientParent(), forms.On(*forms.second));
    EXPECT_EQ(QGuiApplication::focusWindow(), question);
}

TEST(QtOwners, WhereNothingWaitsNothingHappens) {
    ThreeForms forms;
    forms.view.WantAnswer({forms.second->Handle()});
    forms.view.WantAnswer({0});
    ShownForm::Turn();
    EXPECT_EQ(forms.On(*forms.above)->transientParent(), forms.On(*forms.form));
}

}  // namespace
}  // namespace korvane::test
