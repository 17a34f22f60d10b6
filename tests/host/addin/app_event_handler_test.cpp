#include "host/addin/app_event_handler.h"

#include "host/addin/running_addin.h"

namespace korvane {
namespace {

class AppEventHandlerTest : public test::RunningAddin {};

TEST_F(AppEventHandlerTest, KeysAreBoundAtTheFirstActivationThatAllowsIt) {
    host_->refusedKeys = {u"^q", u"%q"};
    Open();
    host_->RaiseWindowActivate();
    EXPECT_TRUE(host_->keys.empty());
    host_->refusedKeys.clear();
    host_->RaiseWindowActivate();
    EXPECT_EQ(host_->keys.size(), 2U);
    // Once was enough: another add-in's binding stays.
    host_->keys[u"^q"] = u"Other";
    host_->RaiseWindowActivate();
    EXPECT_EQ(host_->keys[u"^q"], u"Other");
}

TEST_F(AppEventHandlerTest, SwappedKeysAreBoundAgainAtTheNextActivation) {
    Open();
    host_->RaiseWindowActivate();
    EXPECT_TRUE(state_.options->bChangeKeys(u"%q", u"^q"));
    EXPECT_TRUE(host_->keys.empty());
    host_->RaiseWindowActivate();
    EXPECT_EQ(host_->keys, (std::map<std::u16string, std::u16string>{
                               {u"%q", u"KorvaneExplore"}, {u"^q", u"KorvaneExplorerGoBack"}}));
}

TEST_F(AppEventHandlerTest, HearsNothingWhileEventsAreOffOrAfterShutDown) {
    host_->refusedKeys = {u"^q"};
    Open();
    accesses().StartLog();
    host_->enableEvents = false;
    host_->RaiseWindowActivate();
    host_->enableEvents = true;
    main_.ShutDown();
    host_->RaiseWindowActivate();
    EXPECT_EQ(accesses().CountOf("Application.OnKey"), 0);
}

}  // namespace
}  // namespace korvane
