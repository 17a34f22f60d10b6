// Values and cells of parts, as the host gives them.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostOf;
using test::HostWith;

std::string CalcOf(const CElement& element) { return ToUtf8(element.sCalcValue()); }

const CElement& First(const Exploration& exploration) {
    return *exploration.root().colSubs().at(0);
}

std::string RangeOf(const CElement& element) {
    return element.rngRange() ? ToUtf8(element.rngRange()->Address(host::kExternal)) : "none";
}

// The accesses of one member, in order.
std::vector<std::string> LogOf(const scripted::ScriptedHost& host, const std::string& member) {
    std::vector<std::string> lines;
    for (const auto& line : host.log()) {
        if (line.rfind(member, 0) == 0) lines.push_back(line);
    }
    return lines;
}

std::string FormulaOf(scripted::ScriptedHost& host) {
    const auto& content = host.model().activeSheet->At(1, 1).content;
    return content.formula ? ToUtf8(*content.formula) : "";
}

// ---- The fast mode ----

TEST(EvaluateFast, AsksTheHostForEachPartWithAnEqualsSign) {
    const auto host = HostWith("=B1+MAX(C1,2)");
    host->StartLog();
    const Exploration exploration(*host, true);
    const auto log = LogOf(*host, "Application.Evaluate");
    for (const char* text : {"=B1", "=MAX(C1,2)", "=C1"}) {
        EXPECT_EQ(std::count(log.begin(), log.end(), std::string("Application.Evaluate ") + text),
                  1)
            << text;
    }
    EXPECT_EQ(log.size(), 3U);
    EXPECT_EQ(host->CountOf("Range.SetFormula"), 0);
    EXPECT_EQ(host->CountOf("Application.SetCalculation"), 0);
}

TEST(EvaluateFast, AnyFunctionPartMakesTheValuesPossiblyImprecise) {
    struct Case {
        const char* formula;
        bool functions;
        bool imprecise;
    };
    for (const Case& c : {
             Case{"=B1+C1", true, false},
             Case{"=MAX(B1,C1)", true, true},
             Case{"=MAX(B1,C1)", false, false},
             Case{"=INDEX(B1:B2,1)", false, true},
             Case{"=1", true, false},
         }) {
        const auto host = HostWith(c.formula);
        Exploration exploration(*host, c.functions);
        EXPECT_EQ(exploration.options().bMaybeImprecise, c.imprecise) << c.formula << c.functions;
        EXPECT_FALSE(exploration.options().bContainsIndirect);
    }
}

TEST(EvaluateFast, TheSameReferenceTwiceIsEvaluatedTwice) {
    const auto host = HostWith("=B1+B1");
    host->StartLog();
    const Exploration exploration(*host, true);
    EXPECT_EQ(host->CountOf("Application.Evaluate"), 2);
}

TEST(EvaluateFast, SheetlessReferencesMeanTheActiveSheet) {
    const auto host = HostOf(R"({"workbooks":[{"name":"B.xls","sheets":[
        {"name":"S","cells":{"A1":{"formula":"=B1"},"B1":1}},{"name":"T","cells":{"B1":2}}]}]})");
    host->model().activeSheet = host->model().activeBook->FindSheet(u"S");
    const Exploration exploration(*host, true);
    EXPECT_EQ(RangeOf(First(exploration)), "[B.xls]S!$B$1");
}

TEST(EvaluateFast, AFailureWhileEvaluatingAPartIsNotCaught) {
    const auto host = HostWith("=F(B1)", "", R"j("evaluate":{"=F(B1)":{"fail":true}})j");
    const Exploration exploration(*host, true);
    EXPECT_FALSE(exploration.ok);
    EXPECT_EQ(exploration.log().size(), 1U);
}

TEST(EvaluateFast, AFailureWhileResolvingCellsGivesAPartWithoutCells) {
    // The texts that are made for INDIRECT and OFFSET fail, the calls do not.
    const auto host =
        HostWith("=INDIRECT(B1)+OFFSET(C1,F(1),0)", R"("B1":"X9")", R"j("literals":true,"evaluate":{
        "=INDIRECT(\"X9\",1)":{"fail":true},"=INDIRECT(B1)":{"value":1},
        "=OFFSET([B.xls]S!$C$1,5,0,,)":{"fail":true},"=OFFSET(C1,F(1),0)":{"value":2},
        "=F(1)":{"value":5}})j");
    host->StartLog();
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(host->CountOf("Application.Evaluate =INDIRECT(\"X9\",1)"), 1);
    EXPECT_EQ(host->CountOf("Application.Evaluate =OFFSET([B.xls]S!$C$1,5,0,,)"), 1);
    EXPECT_EQ(RangeOf(First(exploration)), "none");
    EXPECT_EQ(CalcOf(First(exploration)), "1");
    EXPECT_EQ(RangeOf(*exploration.root().colSubs()[1]), "none");
}

TEST(EvaluateFast, AnArgumentThatFailsWhileCellsAreResolvedIsNoFailureEither) {
    const auto host = HostWith("=OFFSET(C1,1,\"\"&B1)", "", R"j("literals":true,"evaluate":{
        "=OFFSET(C1,1,\"\"&B1)":{"range":"S!D1"},"=\"\"&B1":{"fail":true}})j");
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(RangeOf(First(exploration)), "none") << "an OFFSET leads only where its arguments do";
}

// ---- The precise mode ----

constexpr const char* kWritten = R"j("literals":true,"calculation":-4105,"screenUpdating":true,
    "evaluate":{"=MAX(B1,C1)":{"value":"evaluated"},"=MIN(B1,C1)":{"value":"evaluated"}},
    "write":{"=MAX(B1,C1)":{"value":"written"},"=MIN(B1,C1)":{"fail":true}})j";

TEST(EvaluatePrecise, AFunctionPartIsWrittenIntoTheCellAndTheCellPutBack) {
    const auto host = HostWith("=MAX(B1,C1)+1", "", kWritten);
    host->StartLog();
    Exploration exploration(*host, true, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(CalcOf(First(exploration)), "written");
    EXPECT_FALSE(exploration.options().bMaybeImprecise);
    EXPECT_EQ(LogOf(*host, "Range.SetFormula"),
              (std::vector<std::string>{"Range.SetFormula =MAX(B1,C1)",
                                        "Range.SetFormula =MAX(B1,C1)+1"}));
    EXPECT_EQ(FormulaOf(*host), "=MAX(B1,C1)+1");
    EXPECT_EQ(ToUtf8(exploration.root().sValue()), "1") << "the cell shows its own value again";
}

TEST(EvaluatePrecise, APartThatIsTheWholeFormulaIsWrittenLikeAnyOther) {
    const auto host = HostWith("=MAX(B1,C1)", "", kWritten);
    Exploration exploration(*host, true, true);
    EXPECT_EQ(CalcOf(First(exploration)), "written");
    EXPECT_EQ(ToUtf8(exploration.root().sValue()), "1");
    EXPECT_EQ(FormulaOf(*host), "=MAX(B1,C1)");
}

TEST(EvaluatePrecise, ARefusedPartIsEvaluatedOutsideAndTheFormulaIsAsBefore) {
    const auto host = HostWith("=MIN(B1,C1)+1", "", kWritten);
    Exploration exploration(*host, true, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(CalcOf(First(exploration)), "evaluated");
    EXPECT_TRUE(exploration.options().bMaybeImprecise);
    EXPECT_EQ(FormulaOf(*host), "=MIN(B1,C1)+1");
}

TEST(EvaluatePrecise, TheLastPartTellsWhetherValuesMayBeImprecise) {
    const auto good = HostWith("=MIN(B1,C1)+MAX(B1,C1)", "", kWritten);
    EXPECT_FALSE(Exploration(*good, true, true).options().bMaybeImprecise);
    const auto bad = HostWith("=MAX(B1,C1)+MIN(B1,C1)", "", kWritten);
    EXPECT_TRUE(Exploration(*bad, true, true).options().bMaybeImprecise);
    const auto none = HostWith("=B1+C1", "", kWritten);
    EXPECT_FALSE(Exploration(*none, true, true).options().bMaybeImprecise);
}

TEST(EvaluatePrecise, PlainPartsAndPlainExpressionsAreNeverWritten) {
    const auto host = HostOf(R"({"workbooks":[{"names":{"Sum":"=S!B1+S!C1"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=B1+Sum+#N/A"}}}]}],"literals":true})");
    host->StartLog();
    Exploration exploration(*host, true, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(host->CountOf("Range.SetFormula"), 0);
    EXPECT_EQ(host->CountOf("Application.SetCalculation"), 0) << "nothing was to be saved";
    EXPECT_FALSE(exploration.options().bMaybeImprecise);
}

TEST(EvaluatePrecise, BranchesAreWrittenTooWhenEveryFunctionIsShown) {
    const auto host = HostWith("=IF(B1>0,C1,D1)", "", R"j("literals":true,
        "write":{"=B1>0":{"value":true},"=C1":{"value":5},"=IF(B1>0,C1,D1)":{"value":5}})j");
    host->StartLog();
    const Exploration exploration(*host, true, true);
    const auto& branches = First(exploration).colSubs();
    ASSERT_EQ(branches.size(), 3U);
    EXPECT_EQ(ToUtf8(branches[0]->sValue()), "True");
    EXPECT_EQ(CalcOf(*branches[1]), "5");
    EXPECT_EQ(host->CountOf("Range.SetFormula"), 8) << "four parts, each written and put back";
}

TEST(EvaluatePrecise, InPlainModeOnlyReferenceFunctionsAreWritten) {
    const auto host = HostWith("=SUM(INDEX(B1:B2,1),MAX(B1,C1))");
    host->StartLog();
    const Exploration exploration(*host, false, true);
    EXPECT_EQ(LogOf(*host, "Range.SetFormula").size(), 2U);
    EXPECT_EQ(LogOf(*host, "Range.SetFormula")[0], "Range.SetFormula =INDEX(B1:B2,1)");
}

TEST(EvaluatePrecise, TheHostCalculatesManuallyMeanwhileAndAsBeforeAfterwards) {
    const auto host = HostWith("=MAX(B1,C1)+MIN(B1,C1)", "", kWritten);
    host->StartLog();
    const Exploration exploration(*host, true, true);
    EXPECT_EQ(host->CountOf("Application.SetCalculation"), 2) << "once to manual, once back";
    EXPECT_EQ(host->CountOf("Application.SetScreenUpdating"), 2);
    const auto& log = host->log();
    const auto place = [&](const std::string& line) {
        return std::find(log.begin(), log.end(), line) - log.begin();
    };
    EXPECT_LT(place("Application.SetCalculation"), place("Range.SetFormula =MAX(B1,C1)"));
    EXPECT_EQ(host->model().calculation, -4105);
    EXPECT_TRUE(host->model().screenUpdating);
}

TEST(EvaluatePrecise, AnErrorOrABlockInTheCellIsItsValue) {
    const auto host =
        HostWith("=F(1)+G(2)", "", R"j("literals":true,"evaluate":{"=F(1)":{"value":9}},
        "write":{"=F(1)":{"error":2042},"=G(2)":{"range":"S!B1:B2"}})j");
    Exploration exploration(*host, true, true);
    EXPECT_EQ(CalcOf(First(exploration)), "#N/A");
    EXPECT_EQ(CalcOf(*exploration.root().colSubs()[1]), "#VALUE!");
    EXPECT_FALSE(exploration.options().bMaybeImprecise);
}

TEST(EvaluatePrecise, ACellOfALargerArrayRefusesAndThePartIsEvaluatedOutside) {
    const auto host = HostOf(R"j({"workbooks":[{"sheets":[{"name":"S","cells":{
        "A1":{"formula":"=MAX(B1,C1)","value":1,"hasArray":true,"currentArray":"A1:A3"}}}]}],
        "evaluate":{"=MAX(B1,C1)":{"value":"evaluated"}},
            "write":{"=MAX(B1,C1)":{"value":"written"}}})j");
    host->StartLog();
    Exploration exploration(*host, true, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(CalcOf(First(exploration)), "evaluated");
    EXPECT_TRUE(exploration.options().bMaybeImprecise);
    EXPECT_EQ(host->CountOf("Range.SetFormula"), 0);
    EXPECT_GT(host->CountOf("Range.SetFormulaArray"), 0);
    EXPECT_EQ(FormulaOf(*host), "=MAX(B1,C1)");
}

TEST(EvaluatePrecise, AnArrayFormulaOfOneCellIsWrittenAndPutBackAsOne) {
    const auto host = HostOf(R"j({"workbooks":[{"sheets":[{"name":"S","cells":{
        "A1":{"formula":"=MAX(B1,C1)*2","value":1,"hasArray":true}}}]}],
        "evaluate":{"=MAX(B1,C1)":{"value":"evaluated"}},
            "write":{"=MAX(B1,C1)":{"value":"written"}}})j");
    host->StartLog();
    Exploration exploration(*host, true, true);
    EXPECT_EQ(CalcOf(First(exploration)), "written");
    EXPECT_EQ(LogOf(*host, "Range.SetFormula"),
              (std::vector<std::string>{"Range.SetFormulaArray =MAX(B1,C1)",
                                        "Range.SetFormulaArray =MAX(B1,C1)*2"}));
    EXPECT_TRUE(host->model().activeSheet->At(1, 1).content.hasArray);
    EXPECT_EQ(FormulaOf(*host), "=MAX(B1,C1)*2");
}

// A formula that the host would not take back is never overwritten.
TEST(EvaluatePrecise, ALongArrayFormulaIsLeftAlone) {
    for (const int length : {255, 256}) {
        std::string formula = "=MAX(B1,C1)&\"";
        formula += std::string(static_cast<std::size_t>(length) - formula.size() - 1, 'x') + "\"";
        auto document = HostWith(formula, "", kWritten);
        document->model().activeSheet->At(1, 1).content.hasArray = true;
        document->StartLog();
        Exploration exploration(*document, true, true);
        ASSERT_TRUE(exploration.ok);
        EXPECT_EQ(document->CountOf("Range.SetFormulaArray"), length == 255 ? 2 : 0);
        EXPECT_EQ(CalcOf(First(exploration)), length == 255 ? "written" : "evaluated");
        EXPECT_EQ(exploration.options().bMaybeImprecise, length != 255);
    }
    // An ordinary formula may be as long as it likes.
    const auto plain = HostWith("=MAX(B1,C1)&\"" + std::string(300, 'x') + "\"", "", kWritten);
    EXPECT_EQ(CalcOf(First(Exploration(*plain, true, true))), "written");
}

TEST(EvaluatePrecise, NothingIsWrittenOnAProtectedSheet) {
    const auto host = HostWith("=MAX(B1,C1)", "", kWritten);
    host->model().activeSheet->isProtected = true;
    host->StartLog();
    Exploration exploration(*host, true, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(CalcOf(First(exploration)), "evaluated");
    EXPECT_TRUE(exploration.options().bMaybeImprecise);
    EXPECT_EQ(host->CountOf("Range.SetFormula"), 0);
}

TEST(EvaluatePrecise, ARestoringWriteThatFailsIsIgnored) {
    const auto host = HostWith("=MAX(B1,C1)+1", "", kWritten);
    host->FailMember("Range.SetFormula", 2);
    const Exploration exploration(*host, true, true);
    EXPECT_TRUE(exploration.ok);
    EXPECT_TRUE(exploration.log().empty());
    EXPECT_EQ(FormulaOf(*host), "=MAX(B1,C1)");
}

// ---- INDIRECT ----

TEST(EvaluateIndirect, LeadsToTheCellsThatItsTextNames) {
    const auto host = HostWith("=INDIRECT(\"B\"&ROW())", R"("B7":70)", R"j("evaluate":{
        "=\"B\"&ROW()":{"value":"B7"},"=INDIRECT(\"B7\",1)":{"range":"S!B7"},
        "=INDIRECT(\"B\"&ROW())":{"value":70}})j");
    Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =INDIRECT(\"B\"&ROW()) @0 | S<A1> | 1\n"
              "  INDIRECT | INDIRECT(\"B\"&ROW()) @2 | S!B7<B7> | 70\n");
    EXPECT_TRUE(exploration.options().bContainsIndirect);
    EXPECT_TRUE(exploration.options().bMaybeImprecise);
}

TEST(EvaluateIndirect, AsksWithTheReferenceTextAndTheStyle) {
    struct Case {
        const char* formula;
        const char* asked;  // after "Application.Evaluate "; null: nothing is asked
    };
    for (const Case& c : {
             Case{"=INDIRECT(B1)", "=INDIRECT(\"X9\",1)"},
             Case{"=INDIRECT(B1,)", "=INDIRECT(\"X9\",1)"},
             Case{"=INDIRECT(B1,TRUE)", "=INDIRECT(\"X9\",1)"},
             Case{"=INDIRECT(B1,FALSE)", "=INDIRECT(\"X9\",0)"},
             Case{"=INDIRECT(B1,0)", "=INDIRECT(\"X9\",0)"},
             Case{"=INDIRECT(B1,2)", "=INDIRECT(\"X9\",1)"},
             Case{"=INDIRECT(\"Data!B7\")", "=INDIRECT(\"Data!B7\",1)"},
             Case{"=INDIRECT(\"a\"\"b\")", "=INDIRECT(\"a\"b\",1)"},  // quotes are not doubled
             Case{"=INDIRECT(Z9)", "=INDIRECT(\"\",1)"},
             Case{"=INDIRECT(B1,\"no\")", nullptr},
             Case{"=INDIRECT()", nullptr},
         }) {
        const auto host = HostWith(c.formula, R"("B1":"X9")");
        host->StartLog();
        Exploration exploration(*host, false);
        ASSERT_TRUE(exploration.ok) << c.formula;
        EXPECT_TRUE(exploration.options().bContainsIndirect) << c.formula;
        const auto log = LogOf(*host, "Application.Evaluate =INDIRECT(\"");
        const std::string own = std::string("Application.Evaluate ") + c.formula;
        std::vector<std::string> asked;
        std::copy_if(log.begin(), log.end(), std::back_inserter(asked),
                     [&](const auto& line) { return line != own; });
        if (c.asked) {
            ASSERT_EQ(asked.size(), 1U) << c.formula;
            EXPECT_EQ(asked[0], std::string("Application.Evaluate ") + c.asked) << c.formula;
        } else {
            EXPECT_TRUE(asked.empty()) << c.formula;
        }
    }
}

TEST(EvaluateIndirect, OnlyAWholeCallInCapitalsCounts) {
    for (const auto& [formula, functions] : {std::pair{"=indirect(B1)", true},
                                             {"=A1INDIRECT(B1)", true},
                                             {"=INDIRECTS(B1)", true},
                                             {"=SUM(B1)", true}}) {
        const auto host = HostWith(formula);
        EXPECT_FALSE(Exploration(*host, functions).options().bContainsIndirect) << formula;
    }
}

TEST(EvaluateIndirect, InANamesDefinitionItCountsToo) {
    const auto host =
        HostOf(R"j({"workbooks":[{"names":{"Far":"=INDIRECT(S!B1)","Near":"=INDIRECT(S!B1)+1"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=Far"},"B1":"C3"}}]}],
        "evaluate":{"=INDIRECT(\"C3\",1)":{"range":"S!C3"}}})j");
    Exploration exploration(*host, false);
    EXPECT_TRUE(exploration.options().bContainsIndirect);
    EXPECT_EQ(RangeOf(First(exploration)), "[Book1]S!$C$3");
}

// ---- OFFSET ----

TEST(EvaluateOffset, AsksWithTheFullAddressAndTheEvaluatedArguments) {
    struct Case {
        const char* formula;
        const char* asked;
    };
    for (const Case& c : {
             Case{"=OFFSET(A1,2,1)", "=OFFSET([B.xls]S!$A$1,2,1,,)"},
             Case{"=OFFSET(A1,B1)", "=OFFSET([B.xls]S!$A$1,4,,,)"},
             Case{"=OFFSET(A1,,,2,3)", "=OFFSET([B.xls]S!$A$1,,,2,3)"},
             Case{"=OFFSET('My Sheet'!A1:B2,1,1,,B1)",
                  "=OFFSET('[B.xls]My Sheet'!$A$1:$B$2,1,1,,4)"},
             Case{"=OFFSET(A1,1,2,3,4,5)", "=OFFSET([B.xls]S!$A$1,1,2,3,4)"},
             Case{"=OFFSET(A1,B1/8,-1)", "=OFFSET([B.xls]S!$A$1,0.5,-1,,)"},
             Case{"=OFFSET(A1,Z9,#N/A)", "=OFFSET([B.xls]S!$A$1,,#NAME?,,)"},
             Case{"=OFFSET(A1)", "=OFFSET([B.xls]S!$A$1,,,,)"},
             Case{"=OFFSET(OFFSET(A1,1,1),1)", "=OFFSET([B.xls]S!$B$2,1,,,)"},
             Case{"=OFFSET(INDIRECT(C1),1)", "=OFFSET([B.xls]S!$C$3,1,,,)"},
         }) {
        const auto host =
            HostWith(c.formula, R"("B1":4,"C1":"C3")", R"j("literals":true,"evaluate":{
            "=B1/8":{"value":0.5},"=OFFSET([B.xls]S!$A$1,1,1,,)":{"range":"S!B2"},
            "=INDIRECT(\"C3\",1)":{"range":"S!C3"}})j");
        host->StartLog();
        const Exploration exploration(*host, false);
        ASSERT_TRUE(exploration.ok) << c.formula;
        EXPECT_GE(host->CountOf(std::string("Application.Evaluate ") + c.asked), 1) << c.formula;
    }
}

TEST(EvaluateOffset, LeadsToTheMovedCells) {
    const auto host = HostWith(
        "=OFFSET(A1,2,1)", R"("B3":33)",
        R"j("literals":true,"evaluate":{"=OFFSET([B.xls]S!$A$1,2,1,,)":{"range":"S!B3"}})j");
    Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =OFFSET(A1,2,1) @0 | S<A1> | 1\n"
              "  OFFSET | OFFSET(A1,2,1) @2 | S!B3<B3> | #NAME?\n"
              "    A1 | A1 @8 | S<A1> | 1\n");
    EXPECT_FALSE(exploration.options().bContainsIndirect);
}

TEST(EvaluateOffset, ABaseThatLeadsNowhereMovesNothing) {
    const auto host = HostWith("=OFFSET(Nowhere,2,1)");
    host->StartLog();
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(RangeOf(First(exploration)), "none");
    EXPECT_TRUE(LogOf(*host, "Application.Evaluate =OFFSET([").empty());
}

TEST(EvaluateOffset, ArgumentsThatAreExpressionsTakeThePreciseWay) {
    const auto host = HostWith("=OFFSET(A1,B1+1,C1)", R"("B1":4,"C1":1)", R"j("literals":true,
        "evaluate":{"=OFFSET([B.xls]S!$A$1,7,1,,)":{"range":"S!B8"}},
            "write":{"=B1+1":{"value":7}})j");
    host->StartLog();
    const Exploration exploration(*host, false, true);
    EXPECT_EQ(RangeOf(First(exploration)), "[B.xls]S!$B$8");
    const auto written = LogOf(*host, "Range.SetFormula");
    EXPECT_EQ(std::count(written.begin(), written.end(), "Range.SetFormula =B1+1"), 1);
    EXPECT_EQ(std::count(written.begin(), written.end(), "Range.SetFormula =C1"), 0)
        << "a plain argument is evaluated outside";
}

TEST(EvaluateOffset, WhenEveryFunctionIsShownThePlainArgumentsTakeItToo) {
    const auto host = HostWith("=OFFSET(A1,C1,0)", R"("C1":1)");
    host->StartLog();
    const Exploration exploration(*host, true, true);
    const auto written = LogOf(*host, "Range.SetFormula");
    EXPECT_EQ(std::count(written.begin(), written.end(), "Range.SetFormula =C1"), 1);
}

// ---- Names ----

TEST(EvaluateNames, FailuresOfTheLookUpMeanNoName) {
    for (const char* member : {"Names.Item", "Worksheet.Names", "Workbook.Names"}) {
        const auto host = HostOf(R"({"workbooks":[{"names":{"Rate":"=S!$B$2"},"sheets":[{"name":"S",
            "names":{"Rate":"=S!$B$3"},"cells":{"A1":{"formula":"=Rate"}}}]}]})");
        host->FailMember(member);
        const Exploration exploration(*host, false);
        ASSERT_TRUE(exploration.ok) << member;
        const bool sheetFails = std::string(member) != "Workbook.Names";
        const bool bookFails = std::string(member) != "Worksheet.Names";
        EXPECT_EQ(ToUtf8(First(exploration).sFunction()), sheetFails && bookFails ? "" : "Rate")
            << member;
    }
}

}  // namespace
}  // namespace korvane
