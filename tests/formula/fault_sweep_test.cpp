// Every host call can fail. Here each call of an exploration fails once, in turn.
#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostOf;

struct Sweep {
    const char* name;
    const char* document;
    bool bEveryFunction;
    bool bPreciseCalc;
};

void PrintTo(const Sweep& sweep, std::ostream* out) { *out << sweep.name; }

constexpr const char* kFunctions = R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{
    "A1":{"formula":"=SUM(MAX(B1,C1+1),B1:B3)*'My Sheet'!B4-ABS(C1)","value":7,"text":"7.00"},
    "B1":2,"B2":3,"C1":{"value":5,"hidden":"row"}}},
    {"name":"My Sheet"}]},{"name":"P.xls","sheets":[{"name":"Prices"}]}],"literals":true,
    "calculation":-4105,"screenUpdating":true,
    "write":{"=MAX(B1,C1+1)":{"value":6},"=ABS(C1)":{"fail":true}}})j";

constexpr const char* kReferences =
    R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{
    "A1":{"formula":"=OFFSET(INDIRECT(B1),C1+1,1)+INDEX(INDEX(B1:B2,1),2)+T(D1)","value":7},
    "B1":"C3","C1":1}}]},{"name":"P.xls","sheets":[{"name":"Prices"}]}],"literals":true,
    "calculation":2,"screenUpdating":false,
    "evaluate":{"=INDIRECT(\"C3\",1)":{"range":"S!C3"},"=C1+1":{"value":2},
        "=OFFSET([B.xls]S!$C$3,2,1,,)":{"range":"S!D5"},"=T(D1)":{"range":"[P.xls]Prices!D1"}},
    "write":{"=C1+1":{"value":2},"=INDEX(B1:B2,1)":{"fail":true}}})j";

constexpr const char* kNames = R"j({"workbooks":[{"name":"B.xls",
    "names":{"Rate":"=S!$B$2","Yearly":"=S!$B$2*Months+Ring","Months":"=12","Ring":"=Ring2+1",
        "Ring2":"=Ring*2",
             "Cell":"=S!$A$1"},
    "sheets":[{"name":"S","names":{"Own":"=OFFSET(S!B1,1,0)"},"cells":{
        "A1":{"formula":"=Yearly/Rate+Own+Nowhere","value":7},"B2":5}}]}],"literals":true,
    "evaluate":{"=OFFSET([B.xls]S!$B$1,1,0,,)":{"range":"S!B2"}}})j";

constexpr const char* kArray = R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{
    "A1":{"formula":"=SUM(B1:B3*C1:C3)+MAX(B1)","value":7,"hasArray":true,"currentArray":"A1:A2"},
    "A2":{"formula":"=SUM(B1:B3*C1:C3)+MAX(B1)","value":8,"hasArray":true,"currentArray":"A1:A2"},
    "B1":2}}]}],"literals":true,"calculation":-4105})j";

constexpr const char* kOneCellArray =
    R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{
    "A1":{"formula":"=SUM(B1:B3*C1:C3)+MAX(B1)","value":7,"hasArray":true},"B1":2}}]}],
        "literals":true,
    "calculation":-4105,"write":{"=SUM(B1:B3*C1:C3)":{"value":5},"=MAX(B1)":{"value":2}}})j";

constexpr const char* kBranches = R"j({"workbooks":[{"name":"B.xls","names":{"Flag":"=S!$B$1>0"},
    "sheets":[{"name":"S","cells":{
        "A1":{"formula":"=IF(Flag,CHOOSE(B1,C1,\"x,y\",IF(ISERROR(C1),0,#N/A)),C1+1)","value":7},
            "B1":2}}]}],
    "literals":true,"calculation":-4105,
    "evaluate":{"=Flag":{"value":true}},"write":{"=Flag":{"value":true},"=B1":{"value":2},
        "=ISERROR(C1)":{"value":false},"=C1+1":{"fail":true}}})j";

constexpr const char* kProtected =
    R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","protected":true,
    "cells":{"A1":{"formula":"=MAX(B1,C1)+SUM(B1)","value":7,"hasArray":true},"B1":2}}]}],
        "literals":true})j";

class FaultSweep : public testing::TestWithParam<Sweep> {
protected:
    static scripted::Content& ExploredCell(scripted::ScriptedHost& host) {
        return host.model().activeSheet->At(1, 1).content;
    }
};

TEST_P(FaultSweep, EachCallFailsOnce) {
    const Sweep& sweep = GetParam();
    const auto undisturbedHost = HostOf(sweep.document);
    undisturbedHost->StartLog();
    Exploration undisturbed(*undisturbedHost, sweep.bEveryFunction, sweep.bPreciseCalc);
    ASSERT_TRUE(undisturbed.ok) << (undisturbed.log().empty() ? "" : undisturbed.log()[0]);
    const auto calls = static_cast<std::int64_t>(undisturbedHost->log().size());
    ASSERT_GT(calls, 20);

    int failures = 0;
    int lost = 0;
    for (std::int64_t nth = 1; nth <= calls; ++nth) {
        const std::string what = "call " + std::to_string(nth) + ", " +
                                 undisturbedHost->log()[static_cast<std::size_t>(nth) - 1];
        SCOPED_TRACE(what);
        const auto host = HostOf(sweep.document);
        const auto formula = ExploredCell(*host).formula;
        const auto array = ExploredCell(*host).hasArray;
        const int calculation = host->model().calculation;
        const bool screenUpdating = host->model().screenUpdating;
        {
            host->FailNthCall(nth);
            Exploration exploration(*host, sweep.bEveryFunction, sweep.bPreciseCalc);
            EXPECT_FALSE(host->lastFailure().empty()) << "the failure was met";
            if (!exploration.ok) {
                ++failures;
                ASSERT_EQ(exploration.log().size(), 1U);
                EXPECT_EQ(exploration.log()[0].rfind("CElement.bInitRoot: ", 0), 0U)
                    << exploration.log()[0];
            } else {
                EXPECT_TRUE(exploration.log().empty());
            }
            const bool keptCouldNotBeRestored = (host->lastFailure() == "Range.SetFormula" ||
                                                 host->lastFailure() == "Range.SetFormulaArray") &&
                                                ExploredCell(*host).formula != formula;
            if (keptCouldNotBeRestored) {
                ++lost;
                EXPECT_EQ(what.substr(what.find('=')), ToUtf8(*formula))
                    << "only the restoring write may lose it";
                ExploredCell(*host) = ExploredCell(*undisturbedHost);
                host->model().activeSheet->At(1, 1).original.reset();
            }
            EXPECT_EQ(ExploredCell(*host).formula, formula);
            EXPECT_EQ(ExploredCell(*host).hasArray, array);

            host->FailNothing();
            exploration.options().RestoreCalc();
            EXPECT_EQ(host->model().calculation, calculation);
            EXPECT_EQ(host->model().screenUpdating, screenUpdating);

            // The same element explores again as if nothing had happened.
            ASSERT_TRUE(exploration.root().bInitRoot(exploration.options()));
            EXPECT_EQ(exploration.text(), undisturbed.text());
            EXPECT_EQ(exploration.options().bMaybeImprecise, undisturbed.options().bMaybeImprecise);
            test::CheckTree(exploration.root());
        }
        EXPECT_EQ(host->LiveHandles(), 0);

        Exploration next(*host, sweep.bEveryFunction, sweep.bPreciseCalc);
        EXPECT_TRUE(next.ok);
        EXPECT_EQ(next.text(), undisturbed.text());
    }
    EXPECT_GT(failures, 0) << "most calls are needed";
    // A cell of a larger array refuses every write, so nothing is ever overwritten.
    const bool writes = undisturbedHost->CountOf("Range.SetFormula") > 0 ||
                        (undisturbedHost->CountOf("Range.SetFormulaArray") > 0 &&
                         !ExploredCell(*undisturbedHost).currentArray);
    EXPECT_EQ(lost > 0, writes) << "a restoring write that fails is the one way to lose it";
}

INSTANTIATE_TEST_SUITE_P(Documents, FaultSweep,
                         testing::Values(Sweep{"FunctionsFast", kFunctions, true, false},
                                         Sweep{"FunctionsPrecise", kFunctions, true, true},
                                         Sweep{"FunctionsPlain", kFunctions, false, false},
                                         Sweep{"ReferencesFast", kReferences, true, false},
                                         Sweep{"ReferencesPrecise", kReferences, true, true},
                                         Sweep{"ReferencesPlain", kReferences, false, false},
                                         Sweep{"ReferencesPlainPrecise", kReferences, false, true},
                                         Sweep{"NamesFast", kNames, true, false},
                                         Sweep{"NamesPlain", kNames, false, false},
                                         Sweep{"ArrayPrecise", kArray, true, true},
                                         Sweep{"ArrayPlain", kArray, false, false},
                                         Sweep{"OneCellArrayPrecise", kOneCellArray, true, true},
                                         Sweep{"BranchesFast", kBranches, true, false},
                                         Sweep{"BranchesPrecise", kBranches, true, true},
                                         Sweep{"ProtectedPrecise", kProtected, true, true}),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace korvane
