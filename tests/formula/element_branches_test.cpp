// IF and CHOOSE: labelled branches, and which one is chosen.
#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostWith;

// The branches of the one call below the root: "label text@position=value", a
// line each.
std::string BranchesOf(const CElement& root) {
    std::string out;
    for (const auto& branch : root.colSubs().at(0)->colSubs()) {
        out += ToUtf8(branch->sName()) + " " + ToUtf8(branch->sFormula()) + "@" +
               std::to_string(branch->lRootPosition()) + "=" + ToUtf8(branch->sValue()) + "\n";
    }
    return out;
}

std::string Branches(const std::string& formula, const std::string& evaluate) {
    const auto host =
        HostWith(formula, R"("B1":2,"C1":3)", R"("literals":true,"evaluate":{)" + evaluate + "}");
    const Exploration exploration(*host, true);
    return exploration.ok ? BranchesOf(exploration.root()) : "failed";
}

TEST(ElementIf, ACallGivesAConditionAndTwoBranchesOneOfThemChosen) {
    const auto host =
        HostWith("=IF(A1>0,B1,C1)", R"("B1":2,"C1":3)",
                 R"j("evaluate":{"=A1>0":{"value":true},"=IF(A1>0,B1,C1)":{"value":2}})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =IF(A1>0,B1,C1) @0 | S<A1> | 1\n"
              "  IF | IF(A1>0,B1,C1) @2 |  | 2\n"
              "    condition | A1>0 @4 |  | True\n"
              "      A1 | A1 @1 | S<A1> | 1\n"
              "    if true (chosen) | B1 @9 | S!B1<B1> | 2\n"
              "    if false | C1 @12 | S!C1<C1> | 3\n");
    const CElement& call = *exploration.root().colSubs()[0];
    EXPECT_EQ(call.colSubs()[0]->enGetType(), kindIfCondition);
    EXPECT_EQ(call.colSubs()[1]->enGetType(), kindIfTrue);
    EXPECT_EQ(call.colSubs()[2]->enGetType(), kindIfFalse);
    EXPECT_EQ(call.colSubs()[0]->lTag(), 0);
    EXPECT_EQ(call.colSubs()[1]->lTag(), 1);
    EXPECT_EQ(call.colSubs()[2]->lTag(), 0);
    EXPECT_EQ(call.colSubs()[0]->lRootPosition(), 5);
    EXPECT_EQ(call.colSubs()[1]->lRootPosition(), 10);
    EXPECT_EQ(call.colSubs()[2]->lRootPosition(), 13);
}

TEST(ElementIf, WithoutTheSecondBranchThereIsOnlyTheFirst) {
    EXPECT_EQ(Branches("=IF(A1>0,B1)", R"("=A1>0":{"value":true})"),
              "condition A1>0@5=True\nif true (chosen) B1@10=2\n");
    EXPECT_EQ(Branches("=IF(A1>0,B1)", R"("=A1>0":{"value":false})"),
              "condition A1>0@5=False\nif true B1@10=2\n");
}

TEST(ElementIf, AnOmittedBranchLeavesNoChildAndTheOtherKeepsItsKind) {
    EXPECT_EQ(Branches("=IF(A1>0,,C1)", R"("=A1>0":{"value":false})"),
              "condition A1>0@5=False\nif false (chosen) C1@11=3\n");
    EXPECT_EQ(Branches("=IF(A1>0,B1,)", R"("=A1>0":{"value":false})"),
              "condition A1>0@5=False\nif true B1@10=2\n");
    EXPECT_EQ(Branches("=IF(,B1,C1)", ""), "if true B1@6=2\nif false (chosen) C1@9=3\n")
        << "no condition reads as false";
    EXPECT_EQ(Branches("=IF()", ""), "");
}

TEST(ElementIf, FurtherArgumentsAreIgnored) {
    EXPECT_EQ(Branches("=IF(1,B1,C1,D1,E1)", ""),
              "condition 1@5=True\nif true (chosen) B1@7=2\nif false C1@10=3\n");
}

TEST(ElementIf, ACommaInATextDoesNotSplit) {
    EXPECT_EQ(Branches("=IF(A1,\"x,y\",C1)", ""),
              "condition A1@5=True\nif true (chosen) \"x,y\"@8=x,y\nif false C1@14=3\n");
}

TEST(ElementIf, BlanksBelongToTheBranches) {
    EXPECT_EQ(Branches("=IF(1, B1 ,C1)", ""),
              "condition 1@5=True\nif true (chosen)  B1 @7=2\nif false C1@12=3\n");
}

TEST(ElementIf, TheConditionIsReadByItsValue) {
    struct Case {
        const char* answer;
        const char* shown;
        bool decision;
    };
    for (const Case& c : {
             Case{R"({"value":true})", "True", true}, Case{R"({"value":false})", "False", false},
             Case{R"({"value":"TRUE"})", "TRUE", true},
             Case{R"({"value":"false"})", "false", false}, Case{R"({"value":0})", "False", false},
             Case{R"({"value":"0"})", "False", false}, Case{R"({"value":3})", "True", true},
             Case{R"({"value":-0.5})", "True", true}, Case{R"({"value":"0.0E5"})", "False", false},
             Case{R"({"value":""})", "False", false}, Case{R"({"value":null})", "False", false},
             Case{R"({"value":[1,2]})", "False", false},  // an array has no text
             Case{R"({"value":"abc"})", "True", true},
             Case{R"({"error":2042})", "True", true},  // an error too, on purpose
         }) {
        EXPECT_EQ(Branches("=IF(X<9,B1,C1)", std::string("\"=X<9\":") + c.answer),
                  std::string("condition X<9@5=") + c.shown + "\nif true" +
                      (c.decision ? " (chosen)" : "") + " B1@9=2\nif false" +
                      (c.decision ? "" : " (chosen)") + " C1@12=3\n")
            << c.answer;
    }
}

TEST(ElementIf, IsRecognisedInAnyCaseAndNestsInItsBranches) {
    const auto host = HostWith("=if(1,IF(0,B1,C1),D1)", R"("C1":3)");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =if(1,IF(0,B1,C1),D1) @0 | S<A1> | 1\n"
              "  if | if(1,IF(0,B1,C1),D1) @2 |  | #NAME?\n"
              "    condition | 1 @4 |  | True\n"
              "    if true (chosen) | IF(0,B1,C1) @6 |  | #NAME?\n"
              "      IF | IF(0,B1,C1) @1 |  | #NAME?\n"
              "        condition | 0 @4 |  | False\n"
              "        if true | B1 @6 | S!B1<B1> | \n"
              "        if false (chosen) | C1 @9 | S!C1<C1> | 3\n"
              "    if false | D1 @18 | S!D1<D1> | \n");
}

TEST(ElementIf, AConditionThatIsOneCallOfOneReferenceEndsAsALeafWithItsCells) {
    // The call collapses on A1, and then the condition on the call.
    const auto host = HostWith("=IF(ISERROR(A1),0,A1)", "",
                               R"j("literals":true,"evaluate":{"=ISERROR(A1)":{"value":false}})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =IF(ISERROR(A1),0,A1) @0 | S<A1> | 1\n"
              "  IF | IF(ISERROR(A1),0,A1) @2 |  | #NAME?\n"
              "    condition | ISERROR(A1) @4 | S!A1<A1> | False\n"
              "    if true | 0 @16 |  | 0\n"
              "    if false (chosen) | A1 @18 | S!A1<A1> | 1\n");
}

TEST(ElementIf, WithItsConditionAloneItCollapsesOnIt) {
    const auto host = HostWith("=IF(B1)");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =IF(B1) @0 | S<A1> | 1\n"
              "  IF | IF(B1) @2 | S!B1<B1> | #NAME?\n");
}

TEST(ElementIf, ANamedBranchKeepsItsLabelAndItsDefinitionsParts) {
    const auto host = test::HostOf(R"j({"workbooks":[{"names":{"Rate":"=S!$B$2","Flag":"=S!$B$3"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=IF(Flag,Rate,0)"},"B2":7,"B3":true}}]}],
        "literals":true})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =IF(Flag,Rate,0) @0 | S<A1> | \n"
              "  IF | IF(Flag,Rate,0) @2 |  | #NAME?\n"
              "    condition | Flag @4 | S!B3<B3> | True\n"
              "      B3 | S!$B$3 @0 | S<B3> | True\n"
              "    if true (chosen) | Rate @9 | S!B2<B2> | 7\n"
              "      B2 | S!$B$2 @0 | S<B2> | 7\n"
              "    if false | 0 @14 |  | 0\n");
    EXPECT_EQ(ToUtf8(exploration.root().colSubs()[0]->colSubs()[1]->sFunction()), "Rate");
}

TEST(ElementIf, IsSeenThroughWhenFunctionsAreNotShown) {
    const auto host = HostWith("=IF(A1>0,B1,CHOOSE(2,C1,D1))");
    const Exploration exploration(*host, false);
    std::string parts;
    for (const auto& sub : exploration.root().colSubs()) parts += ToUtf8(sub->sFormula()) + " ";
    EXPECT_EQ(parts, "A1 B1 C1 D1 ");
}

// ---- CHOOSE ----

TEST(ElementChoose, ACallGivesAnIndexAndNumberedValuesOneOfThemChosen) {
    const auto host = HostWith("=CHOOSE(2,A1,B1,C1)", R"("B1":2,"C1":3)");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =CHOOSE(2,A1,B1,C1) @0 | S<A1> | 1\n"
              "  CHOOSE | CHOOSE(2,A1,B1,C1) @2 |  | #NAME?\n"
              "    index | 2 @8 |  | 2\n"
              "    value1 | A1 @10 | S!A1<A1> | 1\n"
              "    value2 (chosen) | B1 @13 | S!B1<B1> | 2\n"
              "    value3 | C1 @16 | S!C1<C1> | 3\n");
    const auto& branches = exploration.root().colSubs()[0]->colSubs();
    EXPECT_EQ(branches[0]->enGetType(), kindChooseIndex);
    EXPECT_EQ(branches[1]->enGetType(), kindOtherValue);
    EXPECT_EQ(branches[2]->enGetType(), kindChosenValue);
    EXPECT_EQ(branches[0]->lTag(), 0);
    EXPECT_EQ(branches[1]->lTag(), 1);
    EXPECT_EQ(branches[2]->lTag(), 2);
    EXPECT_EQ(branches[3]->lTag(), 3);
}

TEST(ElementChoose, TheIndexIsRoundedToTheEvenNeighbour) {
    struct Case {
        const char* answer;
        const char* shown;
    };
    for (const Case& c :
         {Case{"2.5", "2"}, Case{"1.5", "2"}, Case{"2.51", "3"}, Case{"0.5", "0"}, Case{"-1", "-1"},
          Case{"\" 2 \"", "2"}, Case{"\"1E0\"", "1"}, Case{"99", "99"}}) {
        const std::string shown = c.shown;
        EXPECT_EQ(
            Branches("=CHOOSE(X/1,B1,C1,9)", std::string("\"=X/1\":{\"value\":") + c.answer + "}"),
            "index X/1@9=" + shown + "\nvalue1" + (shown == "1" ? " (chosen)" : "") +
                " B1@13=2\nvalue2" + (shown == "2" ? " (chosen)" : "") + " C1@16=3\nvalue3" +
                (shown == "3" ? " (chosen)" : "") + " 9@19=9\n")
            << c.answer;
    }
}

TEST(ElementChoose, AnIndexWithoutANumericReadingEndsTheExploration) {
    for (const char* value : {R"({"error":2042})", "\"abc\"", "\"\"", "null", "true"}) {
        const auto host =
            HostWith("=CHOOSE(X1,A1,B1)", std::string(R"("X1":{"value":)") + value + "}");
        const Exploration exploration(*host, true);
        EXPECT_FALSE(exploration.ok) << value;
        ASSERT_EQ(exploration.log().size(), 1U);
        EXPECT_EQ(exploration.log()[0], "CElement.bInitRoot: Type mismatch (bInitRoot)");
        EXPECT_FALSE(Exploration(*HostWith("=1+CHOOSE(X1,A1,B1)"), true).ok);
    }
}

TEST(ElementChoose, AnIndexTooLargeForAWholeNumberEndsItToo) {
    EXPECT_EQ(Branches("=CHOOSE(1E10,B1,C1)", ""), "failed");
    EXPECT_EQ(Branches("=CHOOSE(2147483647,B1,C1)", ""),
              "index 2147483647@9=2147483647\nvalue1 B1@20=2\nvalue2 C1@23=3\n");
}

TEST(ElementChoose, AnEmptyValueKeepsItsNumber) {
    EXPECT_EQ(Branches("=CHOOSE(3,,B1,C1)", ""),
              "index 3@9=3\nvalue2 B1@12=2\nvalue3 (chosen) C1@15=3\n");
    EXPECT_EQ(Branches("=CHOOSE(,B1)", ""), "value1 B1@10=2\n") << "no index chooses nothing";
    EXPECT_EQ(Branches("=CHOOSE(1,B1,)", ""), "index 1@9=1\nvalue1 (chosen) B1@11=2\n");
}

TEST(ElementChoose, IsRecognisedInAnyCase) {
    EXPECT_EQ(Branches("=Choose(1,B1,C1)", ""),
              "index 1@9=1\nvalue1 (chosen) B1@11=2\nvalue2 C1@14=3\n");
}

TEST(ElementChoose, ManyValuesAreNumberedThrough) {
    std::string formula = "=CHOOSE(12";
    for (int k = 0; k < 20; ++k) formula += ",B1";
    const auto host = HostWith(formula + ")");
    const Exploration exploration(*host, true);
    const auto& branches = exploration.root().colSubs()[0]->colSubs();
    ASSERT_EQ(branches.size(), 21U);
    EXPECT_EQ(ToUtf8(branches[10]->sName()), "value10");
    EXPECT_EQ(ToUtf8(branches[12]->sName()), "value12 (chosen)");
    EXPECT_EQ(ToUtf8(branches[20]->sName()), "value20");
}

}  // namespace
}  // namespace korvane
