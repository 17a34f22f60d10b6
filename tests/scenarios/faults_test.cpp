// Every failing call over a host in memory.
#include "scenarios/faults.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

class FaultsInMemory : public ::testing::TestWithParam<FaultyAction> {};

TEST_P(FaultsInMemory, LeaveNothingBehind) { SweepFaults(GetParam(), 1, MakeScriptedWorldHost); }

INSTANTIATE_TEST_SUITE_P(All, FaultsInMemory, ::testing::ValuesIn(FaultyActions()),
                         [](const auto& swept) { return swept.param.name; });

}  // namespace
}  // namespace korvane::test
