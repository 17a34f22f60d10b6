// How a formula is taken apart: the scan and the set-up of children.
#include <gtest/gtest.h>

#include <chrono>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostOf;
using test::HostWith;

// The children below the root as "text@position", a call's own in "[...]".
std::string PartsBelow(const CElement& element) {
    std::string out;
    for (const auto& sub : element.colSubs()) {
        if (!out.empty()) out += ' ';
        out += ToUtf8(sub->sFormula()) + "@" + std::to_string(sub->lRootPosition());
        if (!sub->colSubs().empty()) out += "[" + PartsBelow(*sub) + "]";
    }
    return out;
}

std::string PartsOf(const std::string& formula, bool functions) {
    const auto host = HostWith(formula);
    const Exploration exploration(*host, functions);
    return exploration.ok ? PartsBelow(exploration.root()) : "failed";
}

struct Case {
    const char* formula;
    const char* parts;
};

TEST(ElementParse, PlainModeSeesThroughFunctions) {
    for (const Case& c : {
             Case{"=A1+B2*2", "A1@2 B2@5"},
             Case{"=SUM(A1:A3,C1)", "A1:A3@6 C1@12"},
             Case{"='Q1 Sales'!B4*2", "'Q1 Sales'!B4@2"},
             Case{"=-A1%", "A1@3"},
             Case{"=IFERROR(A1/B1,#DIV/0!)", "A1@10 B1@13 #DIV/0!@16"},
             Case{"=IF(A1>0, \"x,y\", B1)", "A1@5 B1@18"},
             Case{"=INDEX(B1:B9,3)", "B1:B9@8"},  // it leads to no cells here
             Case{"=A1:INDEX(B1:B9,3)", "A1@2 B1:B9@11"},
             Case{"=1", ""},
             Case{"=\"A1+B1\"", ""},
             Case{"=", ""},
             Case{"=A1<>B1", "A1@2 B1@6"},
             Case{"=A1<=B1>=C1", "A1@2 B1@6 C1@10"},
             Case{"=[Book2]Data!B2+Data!B2:C5", "[Book2]Data!B2@2 Data!B2:C5@17"},
             Case{"=\"a\"&B1&\"c\"", "B1@6"},
             Case{"=1E5+1.5E-3", "1.5E@6"},  // the sign of an exponent is an operator
             Case{"=TRUE", "TRUE@2"},        // no constant by the rules of the scan
             Case{"=A1 B1", "A1B1@2"},       // a blank ends no token
             Case{"=(A1)(B1)", "B1@7"},      // and A1 before "(" is a function's name
             Case{"=A1\n+B1", "A1@2 B1@6"},
             Case{"= A1 + B1 ", "A1@3 B1@8"},
             Case{"=SUM((A1,B1),C1)", "A1@7 B1@10 C1@14"},
             Case{"=:A1", "A1@3"},  // a leading colon is dropped
             Case{"=A1:B1:C1", "A1:B1:C1@2"},
             Case{"=A1:SUM(B1)", "B1@9"},  // seen through with what is before the colon
             Case{"=5:INDEX(B1,2)", "B1@10"},
             Case{"=SUM(A1", "A1@6"},
             Case{"=A1)+B1", "A1@2 B1@6"},
             Case{"=#REF!+A1", "#REF!@2 A1@8"},
             Case{"=#N/A", "#N/A@2"},
             Case{"=#REF!/A1", "#REF!/A1@2"},  // one token, for "#" and "/" go together
             Case{"=A1&'It''s'!B1", "A1@2 'It''s'!B1@5"},
             Case{"='a(b'!A1*'c,d'!B1", "'a(b'!A1@2 'c,d'!B1@11"},
             Case{"=A1@B1", "A1@B1@2"},
             Case{"=SUM(1,2,\"x\")", ""},
             Case{"=Sheet1!$A$1", "Sheet1!$A$1@2"},
             Case{"=@A1", "@A1@2"},
             Case{"=Table[Column]+1", "Table[Column]@2"},
             Case{"=A1^-B1", "A1@2 B1@6"},
         }) {
        EXPECT_EQ(PartsOf(c.formula, false), c.parts) << c.formula;
    }
}

TEST(ElementParse, EveryFunctionModeMakesEachCallAPart) {
    for (const Case& c : {
             Case{"=SUM(A1:A3,C1)", "SUM(A1:A3,C1)@2[A1:A3@6 C1@12]"},
             Case{"=SUM(A1:A3)", "SUM(A1:A3)@2"},
             Case{"=A1:INDEX(B1:B9,3)", "A1@2 INDEX(B1:B9,3)@5[B1:B9@11]"},
             Case{"=5:INDEX(B1)", "INDEX(B1)@4"},  // a constant before the colon goes
             Case{"=A1:(B1)", "A1@2 (B1)@5[B1@6]"},
             Case{"=IFERROR(A1/B1,#DIV/0!)", "IFERROR(A1/B1,#DIV/0!)@2[A1@10 B1@13 #DIV/0!@16]"},
             Case{"=MAX(A1,MIN(B1,C1))", "MAX(A1,MIN(B1,C1))@2[A1@6 MIN(B1,C1)@9[B1@13 C1@16]]"},
             Case{"=NOW()", "NOW()@2"},
             Case{"=SUM(A1", "SUM(A1@2[A1@6]"},  // an open bracket runs to the end
             Case{"=SUM(A1+1,B1", "SUM(A1+1,B1@2[A1@6 B1@11]"},
             Case{"=sum(A1,B1)", "sum(A1,B1)@2[A1@6 B1@9]"},
             Case{"=\"a\"(B1)", ""},  // begins with a text: a constant
             Case{"=F(1)(B1)", "F(1)@2 B1@7"}, Case{"=SUM (A1,B1)", "SUM (A1,B1)@2[A1@7 B1@10]"},
             Case{"=ABS(-1)", "ABS(-1)@2"}, Case{"=LEN(\"a,b\")", "LEN(\"a,b\")@2"},
             Case{"=(A1+B1)*2", "A1@3 B1@6"},  // a bracket without a name is none
         }) {
        EXPECT_EQ(PartsOf(c.formula, true), c.parts) << c.formula;
    }
}

TEST(ElementParse, ACallsFunctionIsItsNameAsWritten) {
    const auto host = HostWith("=mAx(A1:Index(B1,2),C1)");
    const Exploration exploration(*host, true);
    const CElement& max = *exploration.root().colSubs()[0];
    EXPECT_EQ(ToUtf8(max.sFunction()), "mAx");
    EXPECT_EQ(ToUtf8(max.sName()), "mAx");
    ASSERT_EQ(max.colSubs().size(), 3U);
    EXPECT_EQ(ToUtf8(max.colSubs()[1]->sFunction()), "Index");
}

TEST(ElementParse, InAnArrayConstantTheBracesAreSkippedAndASemicolonBelongsToAToken) {
    const auto host = HostWith("=SUM({1,2;3,4})");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =SUM({1,2;3,4}) @0 | S<A1> | 1\n"
              "  #NAME? | 2;3 @9 |  | #NAME?\n");
}

TEST(ElementParse, AnErrorConstantIsAPartWithTheErrorsLabel) {
    const auto host =
        HostWith("=IFERROR(A1/B1,#DIV/0!)", "", R"("evaluate":{"=#DIV/0!":{"error":2007}})");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =IFERROR(A1/B1,#DIV/0!) @0 | S<A1> | 1\n"
              "  A1 | A1 @10 | S<A1> | 1\n"
              "  B1 | B1 @13 | S<B1> | \n"
              "  #DIV/0! | #DIV/0! @16 |  | #DIV/0!\n");
}

// ---- Reference functions ----

TEST(ElementParse, AReferenceFunctionThatLeadsToCellsIsOnePart) {
    const auto host =
        HostWith("=INDEX(B1:B9,3)", R"("B3":30)",
                 R"j("literals":true,"evaluate":{"=INDEX(B1:B9,3)":{"range":"S!B3"}})j");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =INDEX(B1:B9,3) @0 | S<A1> | 1\n"
              "  INDEX | INDEX(B1:B9,3) @2 | S!B3<B3> | 30\n"
              "    B1:B9 | B1:B9 @7 | S<B1:B9> | \n");
}

TEST(ElementParse, OneThatLeadsToNoneIsReplacedByItsArguments) {
    const auto host =
        HostWith("=INDEX(B1:B9,3)", "", R"j("evaluate":{"=INDEX(B1:B9,3)":{"value":30}})j");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =INDEX(B1:B9,3) @0 | S<A1> | 1\n"
              "  B1:B9 | B1:B9 @8 | S<B1:B9> | \n");
}

TEST(ElementParse, ARangeUpToAReferenceFunctionHasBothEndsAsParts) {
    const auto host =
        HostWith("=A1:INDEX(B1:B9,3)", "",
                 R"j("literals":true,"evaluate":{"=INDEX(B1:B9,3)":{"range":"S!B3"}})j");
    const Exploration exploration(*host, false);
    ASSERT_EQ(exploration.root().colSubs().size(), 2U);
    EXPECT_EQ(ToUtf8(exploration.root().colSubs()[0]->sFormula()), "A1");
    EXPECT_EQ(ToUtf8(exploration.root().colSubs()[1]->sFormula()), "INDEX(B1:B9,3)");
    EXPECT_EQ(exploration.root().colSubs()[1]->lPos(), 5);
}

TEST(ElementParse, TailsOfTheirNamesAreOpenedLikeThem) {
    const auto host = HostWith("=T(B1)+SET(C1)+FT(D1)");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =T(B1)+SET(C1)+FT(D1) @0 | S<A1> | 1\n"
              "  T | T(B1) @2 | S!B1<B1> | #NAME?\n"
              "  SET | SET(C1) @8 | S!C1<C1> | #NAME?\n"
              "  D1 | D1 @19 | S<D1> | \n");
}

TEST(ElementParse, ACallWhoseCollapseTakesItsCellsAwayIsReplacedToo) {
    const auto host =
        HostWith("=INDEX(Nowhere)+1", "",
                 R"j("literals":true,"evaluate":{"=INDEX(Nowhere)":{"range":"S!B3"}})j");
    const Exploration exploration(*host, false);
    EXPECT_EQ(PartsBelow(exploration.root()), "Nowhere@8");
}

TEST(ElementParse, DeepNestsOfThemCostNoMoreThanTheirLength) {
    const auto nested = [](int depth) {
        std::string formula = "=";
        for (int k = 0; k < depth; ++k) formula += "INDEX(";
        formula += "B1";
        for (int k = 0; k < depth; ++k) formula += ",1)";
        return formula;
    };
    const auto twelve = HostWith(nested(12));
    twelve->StartLog();
    EXPECT_TRUE(Exploration(*twelve, false).ok);
    EXPECT_LT(twelve->CountOf("Application.Evaluate"), 200);
    EXPECT_GE(twelve->CountOf("Application.Evaluate"), 13) << "each call and B1 are evaluated";

    const auto sixtyFour = HostWith(nested(64));
    sixtyFour->StartLog();
    const auto start = std::chrono::steady_clock::now();
    const Exploration deep(*sixtyFour, false);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_LT(sixtyFour->CountOf("Application.Evaluate"), 64 * 3);
    EXPECT_EQ(PartsBelow(deep.root()), "B1@" + std::to_string(2 + 64 * 6));
}

TEST(ElementParse, BlanksBeforeTheBracketsDoNotMakeThemCostMore) {
    std::string formula = "=";
    for (int k = 0; k < 64; ++k) formula += k % 2 == 0 ? "INDEX (" : "A1:(";
    const auto host = HostWith(formula + "B1" + std::string(64, ')'));
    host->StartLog();
    const Exploration exploration(*host, false);
    EXPECT_TRUE(exploration.ok);
    EXPECT_LT(host->CountOf("Application.Evaluate"), 64 * 6);
}

// ---- The single-argument collapse ----

TEST(ElementCollapse, ACallOfOneReferenceIsThatReference) {
    const auto host = HostWith("=SUM(A1:A3)", "", R"j("evaluate":{"=SUM(A1:A3)":{"value":6}})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =SUM(A1:A3) @0 | S<A1> | 1\n"
              "  SUM | SUM(A1:A3) @2 | S!A1:A3<A1:A3> | 6\n");
}

TEST(ElementCollapse, OnlyTheWholeArgumentCounts) {
    for (const Case& c : {
             Case{"=SUM( B1)", "SUM( B1)@2[B1@7]"},
             Case{"=SUM(B1 )", "SUM(B1 )@2[B1@6]"},
             Case{"=SUM(-B1)", "SUM(-B1)@2[B1@7]"},
             Case{"=SUM(B1,1)", "SUM(B1,1)@2[B1@6]"},
             Case{"=SUM((B1))", "SUM((B1))@2[B1@7]"},
             Case{"=SUM(ABS(B1))", "SUM(ABS(B1))@2"},  // ABS has collapsed before
             Case{"=SUM(MAX(B1,C1))", "SUM(MAX(B1,C1))@2[MAX(B1,C1)@6[B1@10 C1@13]]"},
             Case{"=INDIRECT(B1)", "INDIRECT(B1)@2[B1@11]"},
             Case{"=indirect(B1)", "indirect(B1)@2[B1@11]"},
             Case{"=OFFSET(B1)", "OFFSET(B1)@2"},
         }) {
        EXPECT_EQ(PartsOf(c.formula, true), c.parts) << c.formula;
    }
}

TEST(ElementCollapse, TakesTheChildsCellsEvenWhenItHasNone) {
    const auto host = HostWith(
        "=SUM(Nowhere)", "", R"j("literals":true,"evaluate":{"=SUM(Nowhere)":{"range":"S!B3"}})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =SUM(Nowhere) @0 | S<A1> | 1\n"
              "  SUM | SUM(Nowhere) @2 |  | \n");
}

// ---- Defined names ----

constexpr const char* kRates = R"({"workbooks":[{"name":"B.xls",
    "names":{"Rate":"=Inputs!$B$2","Yearly":"=Inputs!$B$2*12"},
    "sheets":[{"name":"S","names":{"Own":"=S!$C$3"},"cells":{"A1":{"formula":"%s","value":1},
        "C3":33}},
              {"name":"Inputs","names":{"Rate":"=Inputs!$B$9"},"cells":{"B2":{"value":5,
                  "text":"5%%"}}}]}],
    "literals":true})";

std::string Rates(const std::string& formula) {
    std::string document = kRates;
    document.replace(document.find("%s"), 2, formula);
    return document.replace(document.find("%%"), 2, "%");
}

TEST(ElementNames, ANameOfCellsIsALeafThatRefersToThem) {
    const auto host = HostOf(Rates("=Rate*2"));
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =Rate*2 @0 | S<A1> | 1\n"
              "  Rate | Rate @2 | Inputs!B2<B2> | 5\n");
}

TEST(ElementNames, ANameOfAnExpressionIsParsedAtItsOwnPlace) {
    const auto host = HostOf(Rates("=1+Yearly"));
    for (const bool functions : {false, true}) {
        const Exploration exploration(*host, functions);
        EXPECT_EQ(exploration.text(),
                  "A1 | =1+Yearly @0 | S<A1> | 1\n"
                  "  Yearly | Yearly @4 |  | #NAME?\n"
                  "    B2 | Inputs!$B$2 @0 | Inputs<B2> | 5%\n");
        const CElement& cells = *exploration.root().colSubs()[0]->colSubs()[0];
        EXPECT_EQ(cells.lRootPosition(), 4);
        EXPECT_EQ(cells.lLength(), 6);
    }
}

TEST(ElementNames, TheSheetsOwnNamesComeBeforeTheWorkbooks) {
    auto document = Rates("=Own+Rate");
    document.replace(document.find(R"("Own":)"), 6, R"("RATE":"=S!$D$4","Own":)");
    const auto host = HostOf(document);
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =Own+Rate @0 | S<A1> | 1\n"
              "  Own | Own @2 | S!C3<C3> | 33\n"
              "  RATE | Rate @6 | S!D4<D4> | \n");
}

TEST(ElementNames, ATokenThatSpellsTheNamesReferenceIsNotExpanded) {
    const auto host = HostOf(R"({"workbooks":[{"names":{"S!B1*2":"=S!$B$1*2"},
        "sheets":[{"name":"S","names":{"_B1":"=_B1"},"cells":{"A1":{"formula":"=_B1"}}}]}]})");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(),
              "A1 | =_B1 @0 | S<A1> | \n"
              "  _B1 | _B1 @2 |  | #NAME?\n");
}

TEST(ElementNames, WhatComesFromADefinitionNeverCollapses) {
    const auto host = HostOf(R"j({"workbooks":[{"names":{"Sum":"=SUM(S!B1:B2)","Neg":"=-S!B1"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=Sum+Neg"}}}]}],
        "evaluate":{"=SUM(S!B1:B2)":{"value":3}}})j");
    const Exploration exploration(*host, true);
    EXPECT_EQ(exploration.text(),
              "A1 | =Sum+Neg @0 | S<A1> | \n"
              "  Sum | Sum @2 |  | 3\n"
              "    SUM | SUM(S!B1:B2) @0 | S!B1:B2<B1:B2> | 3\n"
              "  Neg | Neg @6 |  | #NAME?\n"
              "    B1 | S!B1 @0 | S<B1> | \n");
}

TEST(ElementNames, ANameThatUsesItselfStaysALeaf) {
    struct Ring {
        const char* names;
        const char* tree;
    };
    for (const Ring& ring : {
             Ring{R"("N":"=N")", "  N | N @2 |  | #NAME?\n"},
             Ring{R"("N":"=N+1")", "  N | N @2 |  | #NAME?\n    N | N @0 |  | #NAME?\n"},
             Ring{R"j("N":"=SUM(N)")j",
                  "  N | N @2 |  | #NAME?\n    SUM | SUM(N) @0 |  | #NAME?\n"},
             Ring{R"("N":"=M+1","M":"=n*2")",
                  "  N | N @2 |  | #NAME?\n    M | M @0 |  | #NAME?\n      N | n @0 |  | #NAME?\n"},
             Ring{R"j("N":"=S!B1+M","M":"=MAX(O,1)","O":"=N-M")j",
                  "  N | N @2 |  | #NAME?\n"
                  "    B1 | S!B1 @0 | S<B1> | \n"
                  "    M | M @0 |  | #NAME?\n"
                  "      MAX | MAX(O,1) @0 |  | #NAME?\n"
                  "        O | O @0 |  | #NAME?\n"
                  "          N | N @0 |  | #NAME?\n"
                  "          M | M @0 |  | #NAME?\n"},
         }) {
        const auto host = HostOf(R"({"workbooks":[{"names":{)" + std::string(ring.names) +
                                 R"(},"sheets":[{"name":"S","cells":{"A1":{"formula":"=N"}}}]}]})");
        const Exploration exploration(*host, true);
        ASSERT_TRUE(exploration.ok) << ring.names;
        EXPECT_EQ(exploration.text(), "A1 | =N @0 | S<A1> | \n" + std::string(ring.tree))
            << ring.names;
    }
}

TEST(ElementNames, ANameTwiceSideBySideIsExpandedTwice) {
    const auto host = HostOf(Rates("=Yearly+Yearly"));
    const Exploration exploration(*host, false);
    ASSERT_EQ(exploration.root().colSubs().size(), 2U);
    EXPECT_EQ(exploration.root().colSubs()[0]->colSubs().size(), 1U);
    EXPECT_EQ(exploration.root().colSubs()[1]->colSubs().size(), 1U);
    EXPECT_EQ(exploration.root().colSubs()[1]->colSubs()[0]->lRootPosition(), 9);
}

TEST(ElementNames, AFunctionIsNeverLookedUpAsAName) {
    const auto host = HostOf(Rates("=Rate(1)"));
    host->StartLog();
    const Exploration exploration(*host, true);
    EXPECT_EQ(host->CountOf("Names.Item"), 0);
    EXPECT_EQ(ToUtf8(exploration.root().colSubs()[0]->sFunction()), "Rate");
}

// ---- What would be parsed for ever ----

TEST(ElementParse, ATokenThatSpellsItsParentsTextIsALeaf) {
    for (const char* token : {"#REF!/A1", "#N/A/B1", "#/", "#DIV/0!/#N/A"}) {
        for (const bool functions : {false, true}) {
            EXPECT_EQ(PartsOf(std::string("=") + token, functions), std::string(token) + "@2");
            EXPECT_EQ(PartsOf(std::string("=1+") + token + "*2", functions),
                      std::string(token) + "@4");
        }
    }
    EXPECT_EQ(PartsOf("=SUM(#REF!/A1,B1)", true), "SUM(#REF!/A1,B1)@2[#REF!/A1@6 B1@15]");
    EXPECT_EQ(PartsOf("=SUM(#REF!/A1)", true), "SUM(#REF!/A1)@2");
    EXPECT_EQ(PartsOf("=IF(1,#REF!/A1,2)", true), "IF(1,#REF!/A1,2)@2[1@5 #REF!/A1@7 2@16]");
}

TEST(ElementParse, ALineFeedWithinACallIsSkipped) {
    EXPECT_EQ(PartsOf("=SUM(\nA1,\n B1)", true), "SUM(\nA1,\n B1)@2[A1@7 B1@12]");
}

}  // namespace
}  // namespace korvane
