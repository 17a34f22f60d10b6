#include "bindings/scripted/scripted_modal.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

class ScriptedModalTest : public testing::Test {
protected:
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedModalLoop modal_{accesses_};
    std::string trace_;
};

TEST_F(ScriptedModalTest, TakesStepsUntilItIsDone) {
    bool done = false;
    modal_.steps = {[&] { trace_ += "a"; },
                    [&] {
                        trace_ += "b";
                        done = true;
                    },
                    [&] { trace_ += "c"; }};
    modal_.Run([&] { return done; });
    EXPECT_EQ(trace_, "ab");
    EXPECT_EQ(modal_.steps.size(), 1U) << "the user has not come to the last";
}

TEST_F(ScriptedModalTest, WaitsForNothingWhenItIsDoneAlready) {
    modal_.steps = {[&] { trace_ += "a"; }};
    modal_.Run([] { return true; });
    EXPECT_EQ(trace_, "");
}

TEST_F(ScriptedModalTest, NeverHangs) {
    modal_.steps = {[&] { trace_ += "a"; }};
    EXPECT_THROW(modal_.Run([] { return false; }), Error);
    EXPECT_EQ(trace_, "a");
    EXPECT_EQ(modal_.running, 0);
    modal_.endsWithoutSteps = true;
    EXPECT_NO_THROW(modal_.Run([] { return false; })) << "the last view is gone";
}

TEST_F(ScriptedModalTest, AStepMayWaitWithin) {
    bool inner = false;
    bool outer = false;
    modal_.steps = {[&] {
                        EXPECT_EQ(modal_.running, 1);
                        modal_.Run([&] { return inner; });
                        trace_ += "-";
                    },
                    [&] {
                        EXPECT_EQ(modal_.running, 2);
                        trace_ += "a";
                        inner = true;
                        modal_.steps.push_back([&] {
                            trace_ += "b";
                            outer = true;
                        });
                    }};
    modal_.Run([&] { return outer; });
    EXPECT_EQ(trace_, "a-b");
    EXPECT_EQ(modal_.running, 0);
}

TEST_F(ScriptedModalTest, IsNotedAndFails) {
    accesses_->StartLog();
    modal_.Run([] { return true; });
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"Modal.Run"}));
    accesses_->FailMember("Modal.Run");
    modal_.steps = {[&] { trace_ += "a"; }};
    EXPECT_THROW(modal_.Run([] { return false; }), Error);
    EXPECT_EQ(trace_, "");
}

}  // namespace
}  // namespace korvane::scripted
