#include "apps/command/lone_cell.h"

#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "support/exploring.h"
#include "support/tree_text.h"

namespace korvane::command {
namespace {

std::string TreeOf(LoneCell& cell, const std::string& formula, bool functions) {
    CElement root;
    std::u16string error;
    if (!cell.Parse(ToUtf16(formula), functions, root, error)) return "failed: " + ToUtf8(error);
    test::CheckTree(root);
    return test::TreeText(root);
}

TEST(LoneCell, KnowsNoCellsAndNoNames) {
    LoneCell cell;
    EXPECT_EQ(TreeOf(cell, "=A1+Rate*2", true),
              "A1 | =A1+Rate*2 @0 | Sheet1<A1> | \n"
              "  #NAME? | A1 @2 |  | #NAME?\n"
              "  #NAME? | Rate @5 |  | #NAME?\n");
}

TEST(LoneCell, LiteralsAreThemselves) {
    LoneCell cell;
    EXPECT_EQ(TreeOf(cell, "=IF(TRUE,\"a\"\"b\",1.50)", true),
              "A1 | =IF(TRUE,\"a\"\"b\",1.50) @0 | Sheet1<A1> | \n"
              "  IF | IF(TRUE,\"a\"\"b\",1.50) @2 |  | #NAME?\n"
              "    condition | TRUE @4 |  | True\n"
              "    if true (chosen) | \"a\"\"b\" @9 |  | a\"b\n"
              "    if false | 1.50 @16 |  | 1.5\n");
    EXPECT_EQ(TreeOf(cell, "=CHOOSE(2,A1,B1)", true),
              "A1 | =CHOOSE(2,A1,B1) @0 | Sheet1<A1> | \n"
              "  CHOOSE | CHOOSE(2,A1,B1) @2 |  | #NAME?\n"
              "    index | 2 @8 |  | 2\n"
              "    value1 | A1 @10 |  | #NAME?\n"
              "    value2 (chosen) | B1 @13 |  | #NAME?\n");
}

TEST(LoneCell, AConditionThatCannotBeEvaluatedReadsAsTrue) {
    LoneCell cell;
    const std::string tree = TreeOf(cell, "=IF(A1>0,B1,C1)", true);
    EXPECT_NE(tree.find("condition | A1>0 @4 |  | True\n"), std::string::npos) << tree;
    EXPECT_NE(tree.find("if true (chosen) | B1"), std::string::npos) << tree;
}

TEST(LoneCell, DescribesAFailureAndGoesOnWithTheNextFormula) {
    LoneCell cell;
    EXPECT_EQ(TreeOf(cell, "=\"open", true), "failed: A quote is not closed (bInitRoot)");
    EXPECT_EQ(TreeOf(cell, "=CHOOSE(A1,1,2)", true), "failed: Type mismatch (bInitRoot)");
    EXPECT_EQ(TreeOf(cell, "=CHOOSE(A1,1,2)", false).rfind("A1 | ", 0), 0U);
    EXPECT_EQ(TreeOf(cell, "constant", true), "A1 | constant @0 | Sheet1<A1> | \n");
}

TEST(LoneCell, ARootCanBeUsedAgain) {
    LoneCell cell;
    CElement root;
    std::u16string error;
    ASSERT_TRUE(cell.Parse(u"=A1+B1", true, root, error));
    ASSERT_TRUE(cell.Parse(u"=C1", true, root, error));
    EXPECT_EQ(root.colSubs().size(), 1U);
    EXPECT_GT(cell.hostCalls(), 0);
}

// A scripted document that answers nothing but literals must give the same trees.
TEST(LoneCell, AgreesWithAScriptedCellThatHasNothingAroundIt) {
    const auto host = test::HostOf(R"({"workbooks":[{"name":"Book1","sheets":[{"name":"Sheet1",
        "cells":{"A1":{"formula":"=1","text":null}}}]}],"literals":true})");
    LoneCell cell;
    std::mt19937 random(7);
    const char* const tokens[] = {"IF(",    "CHOOSE(", "INDEX(", "SUM(",  ")",     ")",     ",",
                                  "+",      "1",       "2",      "Xyz",   "\"a\"", "TRUE",  " ",
                                  "#NUM!/", "/",       "\"\"",   "false", "-0",    "1E400", "1E-5",
                                  "T(",     "{1;2}",   "%",      ".5",    "'",     "\""};
    for (int k = 0; k < 2000; ++k) {
        std::string formula = "=";
        for (auto count = random() % 10; count > 0; --count)
            formula += tokens[random() % std::size(tokens)];
        const bool functions = random() % 2 == 0;
        host->model().activeSheet->At(1, 1).content.formula = ToUtf16(formula);
        const test::Exploration scripted(*host, functions);
        ASSERT_EQ(TreeOf(cell, formula, functions),
                  scripted.ok ? scripted.text()
                              : "failed: " + scripted.log().at(0).substr(
                                                 std::string("CElement.bInitRoot: ").size()))
            << formula;
    }
}

}  // namespace
}  // namespace korvane::command
