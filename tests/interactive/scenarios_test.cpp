// Every scenario over a running Calc.
#include "scenarios/scenarios.h"

#include <gtest/gtest.h>

#include "scenarios/model_user.h"
#include "world_host_calc.h"

namespace korvane::test {
namespace {

class ScenarioInCalc : public ::testing::TestWithParam<Scenario> {};

// There is the same behind everything that is done as over a host in memory.
TEST_P(ScenarioInCalc, IsPlayedAndTellsTheSameStory) {
    std::vector<std::string> expected;
    {
        World world;
        ModelUser user(world);
        world.Open();
        expected = Play(GetParam(), world, user);
    }
    World world(MakeCalcWorldHost());
    ModelUser user(world);
    world.Open();
    const auto story = Play(GetParam(), world, user);
    ASSERT_EQ(story.size(), expected.size());
    for (std::size_t k = 0; k < story.size(); ++k) EXPECT_EQ(story[k], expected[k]) << k;
}

INSTANTIATE_TEST_SUITE_P(All, ScenarioInCalc, ::testing::ValuesIn(Scenarios()),
                         [](const auto& played) { return played.param.name; });

}  // namespace
}  // namespace korvane::test
