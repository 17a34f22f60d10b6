// Failing calls over a running Calc: a sample of them, and with KORVANE_SWEEP=all
// every one.
#include "scenarios/faults.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "world_host_calc.h"

namespace korvane::test {
namespace {

constexpr int kSample = 37;

int Stride() {
    const char* const sweep = std::getenv("KORVANE_SWEEP");
    return sweep != nullptr && std::string_view(sweep) == "all" ? 1 : kSample;
}

class FaultsInCalc : public ::testing::TestWithParam<FaultyAction> {};

TEST_P(FaultsInCalc, LeaveNothingBehind) { SweepFaults(GetParam(), Stride(), MakeCalcWorldHost); }

INSTANTIATE_TEST_SUITE_P(All, FaultsInCalc, ::testing::ValuesIn(FaultyActions()),
                         [](const auto& swept) { return swept.param.name; });

}  // namespace
}  // namespace korvane::test
