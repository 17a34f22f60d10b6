// Every scenario over the bare windows, without any desktop.
#include <gtest/gtest.h>

#include "scenarios/model_user.h"
#include "scenarios/scenarios.h"

namespace korvane::test {
namespace {

class WithoutDesktop : public ::testing::TestWithParam<Scenario> {};

TEST_P(WithoutDesktop, IsPlayed) {
    World world;
    ModelUser user(world);
    world.Open();
    Play(GetParam(), world, user);
}

INSTANTIATE_TEST_SUITE_P(All, WithoutDesktop, ::testing::ValuesIn(Scenarios()),
                         [](const auto& played) { return played.param.name; });

}  // namespace
}  // namespace korvane::test
