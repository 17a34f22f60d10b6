#include "apps/report/exploration.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::HostWith;

ExplorationReport ExploreOn(scripted::ScriptedHost& host, bool functions = true,
                            bool precise = false) {
    const auto application = host.Application();
    return Explore(*application, application->ActiveCell(), functions, precise);
}

TEST(Exploration, ReportsEveryMemberOfEveryPart) {
    const auto host = HostWith("=1+IF(B1>0,B1,C1)", R"("B1":{"value":5,"text":"5.00"})",
                               R"j("literals":true,"evaluate":{"=B1>0":{"value":true}})j");
    const auto report = ExploreOn(*host);
    ASSERT_TRUE(report.ok);
    EXPECT_EQ(report.cell, u"[B.xls]S!$A$1");
    EXPECT_EQ(report.formula, u"=1+IF(B1>0,B1,C1)");
    EXPECT_TRUE(report.bEveryFunction);
    EXPECT_FALSE(report.bPreciseCalc);
    EXPECT_TRUE(report.bMaybeImprecise);
    EXPECT_FALSE(report.bContainsIndirect);
    EXPECT_TRUE(report.log.empty());
    ASSERT_TRUE(report.tree);
    EXPECT_EQ(report.tree->range, u"[B.xls]S!$A$1");
    EXPECT_EQ(report.tree->length, 17);
    const PartReport& call = report.tree->children.at(0);
    EXPECT_EQ(call.function, u"IF");
    EXPECT_EQ(call.name, u"IF");
    EXPECT_EQ(call.position, 4);
    EXPECT_EQ(call.calcValue, u"#NAME?");
    EXPECT_FALSE(call.range);
    const PartReport& chosen = call.children.at(1);
    EXPECT_EQ(chosen.kind, 2);
    EXPECT_EQ(chosen.tag, 1);
    EXPECT_EQ(chosen.name, u"if true (chosen)");
    EXPECT_EQ(chosen.position, 9);
    EXPECT_EQ(chosen.rootPosition, 12);
    EXPECT_EQ(chosen.length, 2);
    EXPECT_EQ(chosen.value, u"5");
    EXPECT_EQ(chosen.location, u"S!B1");
    EXPECT_EQ(chosen.range, u"[B.xls]S!$B$1");
    EXPECT_EQ(call.children.at(0).children.at(0).value, u"5.00");
    EXPECT_EQ(call.children.at(0).children.at(0).calcValue, u"5");
    EXPECT_EQ(host->LiveHandles(), 0);
}

TEST(Exploration, AFailureIsALogLineWithoutATree) {
    const auto host = HostWith("=B1+\"open");
    const auto report = ExploreOn(*host);
    EXPECT_FALSE(report.ok);
    EXPECT_FALSE(report.tree);
    EXPECT_EQ(report.formula, u"=B1+\"open");
    EXPECT_EQ(
        report.log,
        (std::vector<std::u16string>{u"CElement.bInitRoot: A quote is not closed (bInitRoot)"}));
    EXPECT_EQ(host->LiveHandles(), 0);
}

TEST(Exploration, AFailureBesideTheElementsIsReportedToo) {
    const auto host = HostWith("=B1");
    host->FailNthCall(2);  // behind ActiveCell: the address of the cell
    const auto report = ExploreOn(*host);
    EXPECT_FALSE(report.ok);
    EXPECT_EQ(report.log, (std::vector<std::u16string>{u"Korvane.Explore: Range.Address failed"}));
}

TEST(Exploration, EveryFailingCallLeavesTheCalculationStateAsBefore) {
    const char* rest = R"j("literals":true,"calculation":-4105,"screenUpdating":true,
        "write":{"=MAX(B1,C1)":{"value":1},"=MIN(B1,C1)":{"fail":true}})j";
    const auto counted = HostWith("=MAX(B1,C1)+MIN(B1,C1)", "", rest);
    ASSERT_TRUE(ExploreOn(*counted, true, true).ok);
    const auto calls = counted->calls();
    for (std::int64_t nth = 2; nth <= calls; ++nth) {
        const auto host = HostWith("=MAX(B1,C1)+MIN(B1,C1)", "", rest);
        host->FailNthCall(nth);
        const auto report = ExploreOn(*host, true, true);
        EXPECT_EQ(host->model().calculation, -4105) << nth << " " << host->lastFailure();
        EXPECT_TRUE(host->model().screenUpdating) << nth << " " << host->lastFailure();
        EXPECT_EQ(report.ok, report.log.empty()) << nth;
        EXPECT_EQ(report.ok, report.tree.has_value()) << nth;
        EXPECT_EQ(host->LiveHandles(), 0) << nth;
    }
}

TEST(Exploration, AHostThatCannotBePutBackIsSaid) {
    const auto host = HostWith("=MAX(B1,C1)");
    host->FailMember("Application.SetCalculation");
    const auto report = ExploreOn(*host, true, true);
    EXPECT_FALSE(report.ok);
    ASSERT_EQ(report.log.size(), 2U);
    EXPECT_EQ(report.log[1], u"CElementOptions.RestoreCalc: Application.SetCalculation failed");
}

}  // namespace
}  // namespace korvane
